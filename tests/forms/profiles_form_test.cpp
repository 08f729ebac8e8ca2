// The profiles through the run driver on the small river: the month filter, a
// yearly variable drawn at the year step, and the layout of filled slots only.
#include <QTest>

#include "core/run_driver.h"
#include "forms/chart_export.h"
#include "forms/profiles_form.h"
#include "forms_test_registry.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

// Feeds the profiles and ends the run at the yield after month `stopAfter`.
class ProfilesOnly : public osm::RunObserver {
public:
    ProfilesOnly(osm::Model& m, osm::ProfilesForm& p, int stopAfter) : m_(m), p_(p), stopAfter_(stopAfter) {}
    void ResetProfiles() override { p_.ResetProfiles(); }
    void UpdateProfiles(int y, int mo) override {
        p_.UpdateProfiles(y, mo);
        ++repaints;
    }
    void Yield() override {
        if (m_.main.CumMonth >= stopAfter_) m_.main.StopRun = true;
    }
    int repaints = 0;

private:
    osm::Model& m_;
    osm::ProfilesForm& p_;
    int stopAfter_;
};

class ProfilesFormTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<osm::test::SmallModel> s_;
    osm::test::CollectMessages messages_;

private slots:
    void init() {
        s_ = osm::test::StartSmallModel(true);
        s_->m.messages = &messages_;
    }
    void cleanup() { s_.reset(); }

    void theProfileMonthFiltersTheRepaintsAndAYearlyVariableWaitsForTheYearStep() {
        osm::Model& m = s_->m;
        m.main.ProfileMonth = 6;
        m.graphs.ProfSlot(2) = 12;  // power value, yearly
        osm::ProfilesForm p(m);
        p.SetupProfiles();
        ProfilesOnly june(m, p, 8);
        osm::StartRun(m, june, 48, 1);
        QCOMPARE(june.repaints, 1);
        const int r = m.main.FirstReach;
        QCOMPARE(p.State(1).curves[0][0], m.main.Results(0, 1, 1, r, 6));
        QVERIFY(m.main.Results(0, 1, 1, r, 6) != m.main.Results(0, 1, 1, r, 8));
        QCOMPARE(p.PointCount(2, 0), 0);
        // A filter of zero: every month and the year step.
        m.main.ProfileMonth = 0;
        ProfilesOnly every(m, p, 1000);
        osm::StartRun(m, every, 48, 1);
        QCOMPARE(every.repaints, 13);
        QCOMPARE(p.State(2).curves[0][0], m.main.Results(0, 12, 1, r, 12));
    }

    void onlyFilledSlotsAreLaidOut() {
        osm::Model& m = s_->m;
        m.graphs.ProfSlot(2) = 0;
        m.graphs.ProfSlot(5) = 0;
        osm::ProfilesForm p(m);
        p.resize(1200, 800);
        p.show();
        p.SetupProfiles();
        QVERIFY(p.ChartView(2)->isHidden());
        // Four charts three times as wide as high: two columns of two.
        QCOMPARE(p.ChartView(3)->geometry().top(), p.ChartView(1)->geometry().top());
        QVERIFY(p.ChartView(4)->geometry().top() > p.ChartView(1)->geometry().bottom());
    }
};

}  // namespace

OSM_FORMS_TEST(ProfilesFormTest);
#include "profiles_form_test.moc"
