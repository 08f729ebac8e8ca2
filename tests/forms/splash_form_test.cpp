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
    void eachButtonChoosesItsMode() {
        osm::SplashForm whole(QStringLiteral("Line oneLine two"));
        QCOMPARE(whole.txWarn->toPlainText(), QStringLiteral("Line oneLine two"));
        QVERIFY(!whole.SplashDone());
        whole.cmdWhole->click();
        QVERIFY(whole.SplashDone());
        QVERIFY(!whole.PhysOnly());
        QCOMPARE(whole.result(), int(QDialog::Accepted));
        osm::SplashForm phys(QString{});
        phys.cmdRunPhys->click();
        QVERIFY(phys.PhysOnly());
    }
};

}  // namespace

OSM_FORMS_TEST(SplashFormTest);
#include "splash_form_test.moc"
