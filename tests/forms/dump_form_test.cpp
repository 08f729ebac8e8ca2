// The results dump form: its grids, the toggling of chosen rows, the refusal of
// an empty choice, and the dump written for the choice.
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <fstream>
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

// Answers the save dialog with a fixed name and remembers what it was asked.
class FixedDialogs : public osm::FileDialogs {
public:
    QString answer, title, ext, start;
    int asked = 0;
    QString Save(QWidget*, const QString& t, const QString& e, const QString& s) override {
        ++asked;
        title = t, ext = e, start = s;
        return answer;
    }
};

QString mark(const QTableWidget* grid, int row) { return grid->item(row, 1)->text(); }

void selectRows(QTableWidget* grid, int first, int last) {
    grid->clearSelection();
    grid->setRangeSelected(QTableWidgetSelectionRange(first, 0, last, 1), true);
}

class DumpFormTest : public QObject {
    Q_OBJECT

    std::unique_ptr<osm::test::SmallModel> s;
    osm::test::CollectMessages messages;
    FixedDialogs dialogs;

    osm::Model& m() { return s->m; }
    void chooseNothing() {
        m().graphs.DumpVar.fill(false);
        m().graphs.DumpReach.fill(false);
    }

private slots:
    void init() {
        s = osm::test::StartSmallModel(true);
        messages.seen.clear();
        m().messages = &messages;
        dialogs = FixedDialogs{};
    }
    void cleanup() { s.reset(); }

    void gridsShowTheTableAndTheChoiceInForce() {
        chooseNothing();
        m().graphs.DumpVar(1) = true;
        m().graphs.DumpReach(m().main.FirstReach + 1) = true;
        DumpForm f(m(), dialogs);
        QCOMPARE(f.windowTitle(), QStringLiteral("Save Results to ASCII File"));
        QCOMPARE(f.g->rowCount(), osm::GraphRowCount(m().graphs));
        QCOMPARE(f.g->horizontalHeaderItem(0)->text(), QStringLiteral("Variable"));
        QCOMPARE(f.g->horizontalHeaderItem(1)->text(), QStringLiteral("X=Save"));
        QCOMPARE(f.gR->horizontalHeaderItem(0)->text(), QStringLiteral("Reach"));
        QCOMPARE(f.g->item(0, 0)->text(), QString::fromStdString(osm::GraphRowLabel(m().graphs, 1, 1)));
        QCOMPARE(mark(f.g, 0), QString());
        QCOMPARE(mark(f.g, 1), QStringLiteral("X"));
        QCOMPARE(f.gR->rowCount(), m().main.LastReach - m().main.FirstReach + 1);
        QCOMPARE(f.gR->item(1, 0)->text(),
                 QStringLiteral("2 - ") + QString::fromStdString(m().main.ReachLabel(m().main.FirstReach + 1)));
        QCOMPARE(mark(f.gR, 1), QStringLiteral("X"));
    }

    void aSelectedRangeTogglesEachRow() {
        chooseNothing();
        m().graphs.DumpVar(2) = true;
        DumpForm f(m(), dialogs);
        selectRows(f.g, 1, 3);
        DumpForm::ToggleSelected(f.g);
        QCOMPARE(mark(f.g, 0), QString());
        QCOMPARE(mark(f.g, 1), QStringLiteral("X"));
        QCOMPARE(mark(f.g, 2), QString());  // was on, toggled off
        QCOMPARE(mark(f.g, 3), QStringLiteral("X"));
        QVERIFY(f.g->selectionModel()->selectedRows().isEmpty());
        // The grids are copied into the model only on OK.
        QVERIFY(m().graphs.DumpVar(2));
    }

    void aMouseClickTogglesItsRow() {
        chooseNothing();
        DumpForm f(m(), dialogs);
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        const QRect cell = f.gR->visualItemRect(f.gR->item(0, 0));
        QTest::mouseClick(f.gR->viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(mark(f.gR, 0), QStringLiteral("X"));
        QTest::mouseClick(f.gR->viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(mark(f.gR, 0), QString());
    }

    void okWithoutAVariableOrAReachRefusesAndStaysOpen() {
        chooseNothing();
        m().graphs.DumpVar(0) = true;  // a variable but no reach
        DumpForm f(m(), dialogs);
        f.cmdOK->click();
        QCOMPARE(messages.seen.size(), size_t{1});
        QCOMPARE(messages.seen[0].text,
                 std::string("No variables or reaches selected. Select variables/reaches and click on OK or click "
                             "on Cancel button to Exit."));
        QCOMPARE(dialogs.asked, 0);
        QCOMPARE(f.result(), int(QDialog::Rejected));
        QVERIFY(m().graphs.DumpVar(0));
    }

    void cancelChangesNothing() {
        chooseNothing();
        DumpForm f(m(), dialogs);
        selectRows(f.g, 0, 0);
        DumpForm::ToggleSelected(f.g);
        f.cmdCancel->click();
        QVERIFY(!m().graphs.DumpVar(0));
    }

    void okAsksForAFileAndWritesTheChosenColumns() {
        osm::RunObserver quiet;
        osm::StartRun(m(), quiet, 48, 1);
        messages.seen.clear();
        chooseNothing();
        DumpForm f(m(), dialogs);
        selectRows(f.g, 0, 0);
        DumpForm::ToggleSelected(f.g);
        selectRows(f.gR, 1, 1);
        DumpForm::ToggleSelected(f.gR);
        dialogs.answer = QString::fromStdString(s->folder.File("chosen.out"));
        f.cmdOK->click();
        QVERIFY2(messages.seen.empty(), messages.seen.empty() ? "" : messages.seen[0].text.c_str());
        QCOMPARE(dialogs.title, QStringLiteral("Save Results to File"));
        QCOMPARE(dialogs.ext, QStringLiteral("out"));
        QVERIFY(dialogs.start.endsWith(QStringLiteral("default.out")));
        QCOMPARE(f.result(), int(QDialog::Accepted));
        QVERIFY(m().graphs.DumpVar(0));
        QVERIFY(m().graphs.DumpReach(m().main.FirstReach + 1));
        std::istringstream text(s->folder.Read("chosen.out"));
        std::string line;
        int records = 0;
        std::getline(text, line);
        QCOMPARE(line, "\"Yr\",\"Month\",\"CumMonth\",\"2 - " + osm::GraphRowLabel(m().graphs, 1, 1) + "\"\r");
        while (std::getline(text, line)) ++records;
        QCOMPARE(records, 12);
    }

    void aCancelledSaveWritesNothingAndStaysOpen() {
        chooseNothing();
        m().graphs.DumpVar(0) = true;
        m().graphs.DumpReach(m().main.FirstReach) = true;
        DumpForm f(m(), dialogs);
        f.cmdOK->click();
        QCOMPARE(dialogs.asked, 1);
        QCOMPARE(f.result(), int(QDialog::Rejected));
        QVERIFY(messages.seen.empty());
    }
};

}  // namespace

OSM_FORMS_TEST(DumpFormTest);
#include "dump_form_test.moc"
