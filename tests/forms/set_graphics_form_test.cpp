// The graphics setup form: the boxes that write at once, the slots read on
// Apply only from the pages that were edited, and the limit check.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "core/model.h"
#include "forms/set_graphics_form.h"
#include "forms_test_registry.h"
#include "presentation/graphics_setup.h"
#include "support/small_model.h"

namespace {

using osm::SetGraphicsForm;

class SetGraphicsFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::Model& m() { return s->m; }
    osm::Graphs& g() { return s->m.graphs; }

private slots:
    void init() {
        s = osm::test::StartSmallModel(true);
        osm::SetGraphSetupDefaults(m());
        for (int i = 1; i <= 6; ++i) g().MapSlot(i) = 0;
    }
    void cleanup() { s.reset(); }

    void showsTheSetupAndWritesTheWindowAndMonthAtOnce() {
        g().YMax(1, 2) = 40;
        SetGraphicsForm f(m());
        QVERIFY(!f.chkVisForms[1]->isChecked());
        QCOMPARE(f.graphSlots[2].select->currentIndex(), 2);
        QCOMPARE(f.graphSlots[1].yMax->text(), QStringLiteral("40"));
        QCOMPARE(f.graphSlots[0].yMax->text(), QString());  // automatic top
        f.txTimeWindow->setText(QStringLiteral("16"));
        QCOMPARE(g().TimeWindow, 16);
        f.txtProfMonth->setText(QStringLiteral("6"));
        f.txtProfMonth->setText(QStringLiteral("99999"));  // does not fit: kept
        QCOMPARE(m().main.ProfileMonth, 6);
    }

    void applyReadsTheEditedPagesOnly() {
        SetGraphicsForm f(m());
        QSignalSpy applied(&f, &SetGraphicsForm::applied);
        g().ProfSlot(1) = 9;  // changed behind the form; its page is not edited
        f.graphSlots[0].visible->setChecked(false);
        f.graphSlots[1].select->setCurrentIndex(6);
        f.graphSlots[1].yMin->setText(QStringLiteral("2.5"));
        f.chkVisForms[2]->setChecked(false);
        f.btApply->click();
        QCOMPARE(applied.count(), 1);
        QCOMPARE(g().GraphSlot(1), 0);
        QCOMPARE(g().GraphSlot(2), 7);
        QCOMPARE(g().YMin(1, 2), 2.5f);
        QCOMPARE(g().ProfSlot(1), 9);
        QCOMPARE(g().VisForms(3), 0);
    }

    void limitCheckRaisesATopThatIsNotAboveTheBottom() {
        SetGraphicsForm f(m());
        f.graphSlots[0].yMin->setText(QStringLiteral("5"));
        f.graphSlots[0].yMax->setText(QStringLiteral("3"));
        f.profileSlots[3].yMin->setText(QStringLiteral("1"));  // top left empty: Val gives 0
        f.graphSlots[4].yMax->setText(QStringLiteral("8"));
        f.btApply->click();
        QCOMPARE(f.graphSlots[0].yMax->text(), QStringLiteral("5.0001"));
        QCOMPARE(g().YMax(1, 1), 5.0001f);
        QCOMPARE(g().YMax(2, 4), 1.0001f);
        QCOMPARE(f.graphSlots[4].yMax->text(), QStringLiteral("8"));  // already above
        QCOMPARE(f.graphSlots[5].yMax->text(), QString());           // both empty: automatic
    }

    void syncGivesTheProfilesTheGraphsChoice() {
        SetGraphicsForm f(m());
        f.graphSlots[0].select->setCurrentIndex(4);
        f.graphSlots[1].visible->setChecked(false);
        f.graphSlots[2].yMax->setText(QStringLiteral("12"));
        f.btMatch->click();
        f.btApply->click();
        QCOMPARE(g().ProfSlot(1), 5);
        QCOMPARE(g().ProfSlot(2), 0);
        QCOMPARE(g().YMax(2, 3), 12.0f);
    }
};

}  // namespace

OSM_FORMS_TEST(SetGraphicsFormTest);
#include "set_graphics_form_test.moc"
