// The production parameter file from the File menu of the whole model.
#include <QtTest/QtTest>

#include <memory>

#include "forms/file_dialogs.h"
#include "forms/main_window.h"
#include "support/collect_messages.h"
#include "support/small_model.h"

namespace {

class OneAnswer : public osm::FileDialogs {
public:
    QString answer;
    QString title;
    QString Open(QWidget*, const QString& t, const QString&, const QString&) override { return title = t, answer; }
    QString Save(QWidget*, const QString& t, const QString&, const QString&) override { return title = t, answer; }
};

}  // namespace

class ProductionMenuTest : public QObject {
    Q_OBJECT

private slots:
    // Saved, changed, loaded back: the saved value returns and the file in force
    // is the loaded one; a bad file says where and keeps what was in force.
    void savedAndLoadedFromTheMenu() {
        auto s = osm::test::StartSmallModel(false);
        osm::test::CollectMessages messages;
        s->m.messages = &messages;
        OneAnswer dialogs;
        osm::MainWindow w(s->m, &dialogs);
        QVERIFY(w.Entry("mnuLoadProdPar")->isEnabled());
        dialogs.answer = QString::fromStdString(s->folder.File("mine.bhp"));
        w.Entry("mnuSaveProdPar")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Save Production Submodel Parameters"));
        s->m.production.AlgaeMax = 99;
        w.Entry("mnuLoadProdPar")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Load Chemistry/Production Submodel Parameter File"));
        QCOMPARE(s->m.production.AlgaeMax, 3.0f);
        QCOMPARE(s->m.main.BhpFile, s->folder.File("mine.bhp"));

        dialogs.answer = QString::fromStdString(s->folder.Write("bad.bhp", "0.8 475 40\r\n"));
        s->m.production.AlgaeMax = 7;
        w.Entry("mnuLoadProdPar")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("bad.bhp:2") != std::string::npos);
        QCOMPARE(s->m.production.AlgaeMax, 7.0f);
        QCOMPARE(s->m.main.BhpFile, s->folder.File("mine.bhp"));
    }
};

QTEST_MAIN(ProductionMenuTest)
#include "production_menu_test.moc"
