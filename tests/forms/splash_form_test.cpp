// The start dialog: the two choices fix the mode.
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "forms/splash_form.h"
#include "forms_test_registry.h"

namespace {

class SplashFormTest : public QObject {
    Q_OBJECT
private slots:
    void showsMessageAndVersion() {
        osm::SplashForm f(QStringLiteral("Line oneLine two"));
        QCOMPARE(f.txWarn->toPlainText(), QStringLiteral("Line oneLine two"));
        QCOMPARE(f.lbVersion->text(), QStringLiteral("Version 1.0.0"));
        QCOMPARE(f.cmdWhole->text(), QStringLiteral("Run Entire Model"));
        QCOMPARE(f.cmdRunPhys->text(), QStringLiteral("Run Physical Model Only"));
        QVERIFY(!f.SplashDone());
    }
    void eachButtonChoosesItsMode() {
        osm::SplashForm whole(QString{});
        whole.cmdWhole->click();
        QVERIFY(whole.SplashDone());
        QVERIFY(!whole.PhysOnly());
        QCOMPARE(whole.result(), int(QDialog::Accepted));
        osm::SplashForm phys(QString{});
        phys.cmdRunPhys->click();
        QVERIFY(phys.SplashDone());
        QVERIFY(phys.PhysOnly());
    }
};

}  // namespace

OSM_FORMS_TEST(SplashFormTest);
#include "splash_form_test.moc"
