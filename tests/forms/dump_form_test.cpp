// The results dump form: toggling rows, refusing an empty choice, and writing
// the chosen columns.
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <sstream>

#include "core/model.h"
#include "core/run_driver.h"
#include "forms/dump_form.h"
#include "forms/file_dialogs.h"
#include "forms_test_registry.h"
#include "presentation/graph_table.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

using osm::DumpForm;

// Answers the save dialog with a fixed name.
class FixedDialogs : public osm::FileDialogs {
public:
    QString answer, ext, start;
    int asked = 0;
    QString Save(QWidget*, const QString&, const QString& e, const QString& s) override {
        ++asked;
        ext = e, start = s;
        return answer;
    }
};

QString mark(const QTableWidget* grid, int row) { return grid->item(row, 1)->text(); }

void toggleRows(QTableWidget* grid, int first, int last) {
    grid->clearSelection();
    grid->setRangeSelected(QTableWidgetSelectionRange(first, 0, last, 1), true);
    DumpForm::ToggleSelected(grid);
}

class DumpFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    FixedDialogs dialogs;

    osm::Model& m() { return s->m; }

private slots:
    void init() {
        s = osm::test::StartSmallModel(true);
        messages.seen.clear();
        m().messages = &messages;
        dialogs = FixedDialogs{};
        m().graphs.DumpVar.fill(false);
        m().graphs.DumpReach.fill(false);
    }
    void cleanup() { s.reset(); }

    void gridsShowTheChoiceAndCancelKeepsIt() {
        m().graphs.DumpVar(2) = true;
        m().graphs.DumpReach(m().main.FirstReach + 1) = true;
        DumpForm f(m(), dialogs);
        QCOMPARE(f.g->item(0, 0)->text(), QString::fromStdString(osm::GraphRowLabel(m().graphs, 1, 1)));
        QCOMPARE(f.gR->item(1, 0)->text(),
                 QStringLiteral("2 - ") + QString::fromStdString(m().main.ReachLabel(m().main.FirstReach + 1)));
        QCOMPARE(mark(f.gR, 1), QStringLiteral("X"));
        toggleRows(f.g, 1, 3);
        QCOMPARE(QStringList({mark(f.g, 0), mark(f.g, 1), mark(f.g, 2), mark(f.g, 3)}).join('|'),
                 QStringLiteral("|X||X"));  // row 2 was on
        QVERIFY(f.g->selectionModel()->selectedRows().isEmpty());
        // A mouse click toggles its row.
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        QTest::mouseClick(f.gR->viewport(), Qt::LeftButton, {}, f.gR->visualItemRect(f.gR->item(0, 0)).center());
        QCOMPARE(mark(f.gR, 0), QStringLiteral("X"));
        f.cmdCancel->click();
        QVERIFY(m().graphs.DumpVar(2));
        QVERIFY(!m().graphs.DumpVar(1));
        QVERIFY(!m().graphs.DumpReach(m().main.FirstReach));
    }

    void anEmptyChoiceOrACancelledSaveStaysOpen() {
        m().graphs.DumpVar(0) = true;
        DumpForm f(m(), dialogs);
        f.cmdOK->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(messages.seen[0].text,
                 std::string("No variables or reaches selected. Select variables/reaches and click on OK or click "
                             "on Cancel button to Exit."));
        QCOMPARE(dialogs.asked, 0);
        toggleRows(f.gR, 0, 0);
        f.cmdOK->click();
        QCOMPARE(dialogs.asked, 1);
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(f.result(), int(QDialog::Rejected));
    }

    void okWritesTheChosenColumns() {
        osm::RunObserver quiet;
        osm::StartRun(m(), quiet, 48, 1);
        messages.seen.clear();
        DumpForm f(m(), dialogs);
        toggleRows(f.g, 0, 0);
        toggleRows(f.gR, 1, 1);
        dialogs.answer = QString::fromStdString(s->folder.File("chosen.out"));
        f.cmdOK->click();
        QVERIFY2(messages.seen.empty(), messages.seen.empty() ? "" : messages.seen[0].text.c_str());
        QCOMPARE(dialogs.ext, QStringLiteral("out"));
        QVERIFY(dialogs.start.endsWith(QStringLiteral("default.out")));
        QCOMPARE(f.result(), int(QDialog::Accepted));
        QVERIFY(m().graphs.DumpVar(0));
        QVERIFY(m().graphs.DumpReach(m().main.FirstReach + 1));
        std::istringstream text(s->folder.Read("chosen.out"));
        std::string line;
        std::getline(text, line);
        QCOMPARE(line, "\"Yr\",\"Month\",\"CumMonth\",\"2 - " + osm::GraphRowLabel(m().graphs, 1, 1) + "\"\r");
        int records = 0;
        while (std::getline(text, line)) ++records;
        QCOMPARE(records, 12);
    }
};

}  // namespace

OSM_FORMS_TEST(DumpFormTest);
#include "dump_form_test.moc"
