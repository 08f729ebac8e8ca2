// The population and tributary habitat files from the File menu of the whole model.
#include <QtTest/QtTest>

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

class PopulationMenuTest : public QObject {
    Q_OBJECT

private slots:
    // Saved, changed, loaded back; a bad file says where and keeps what was in force.
    void populationFile() {
        auto s = osm::test::StartSmallModel(false);
        osm::test::CollectMessages messages;
        s->m.messages = &messages;
        OneAnswer dialogs;
        osm::MainWindow w(s->m, &dialogs);
        dialogs.answer = QString::fromStdString(s->folder.File("mine.fis"));
        w.Entry("MnuSavePopPars")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Save Population Submodel Parameters"));
        s->m.popsubs.sbase(2) = 0.5f;
        w.Entry("MnuPopParLoad")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Load Population Submodel Parameter File"));
        QCOMPARE(s->m.popsubs.sbase(2), 0.8f);
        QCOMPARE(s->m.main.FisFile, s->folder.File("mine.fis"));

        dialogs.answer = QString::fromStdString(s->folder.Write("bad.fis", "2 20 6 3\r\nx\r\n"));
        w.Entry("MnuPopParLoad")->trigger();
        QCOMPARE(messages.seen.size(), size_t{1});
        QVERIFY(messages.seen[0].text.find("bad.fis:") != std::string::npos);
        QCOMPARE(s->m.popsubs.NSpecies, int16_t{2});
        QCOMPARE(s->m.main.FisFile, s->folder.File("mine.fis"));
    }

    void tributaryHabitatFile() {
        auto s = osm::test::StartSmallModel(false);
        OneAnswer dialogs;
        osm::MainWindow w(s->m, &dialogs);
        dialogs.answer = QString::fromStdString(s->folder.File("mine.trb"));
        w.Entry("mnuSaveTribHabData")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Save Tributary Habitat Information"));
        const float len = s->m.morph.TribHabLen(3);
        s->m.morph.TribHabLen(3) = 1;
        w.Entry("mnuLoadTribHabData")->trigger();
        QCOMPARE(dialogs.title, QStringLiteral("Load Tributary Habitat Data"));
        QCOMPARE(s->m.morph.TribHabLen(3), len);
        QCOMPARE(s->m.main.TrbFile, s->folder.File("mine.trb"));
    }
};

QTEST_MAIN(PopulationMenuTest)
#include "population_menu_test.moc"
