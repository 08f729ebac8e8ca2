#include "forms/splash_form.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace osm {

QString VersionText() {
    return QStringLiteral("Version %1.%2.%3").arg(OSM_VERSION_MAJOR).arg(OSM_VERSION_MINOR).arg(OSM_VERSION_PATCH);
}

SplashForm::SplashForm(const QString& message, QWidget* parent)
    : QDialog(parent),
      txWarn(new QPlainTextEdit(message, this)),
      lbVersion(new QLabel(VersionText(), this)),
      cmdWhole(new QPushButton(QStringLiteral("Run Entire Model"), this)),
      cmdRunPhys(new QPushButton(QStringLiteral("Run Physical Model Only"), this)) {
    setWindowTitle(QStringLiteral("Ostrel Gorge Ecosystem Model"));
    setObjectName(QStringLiteral("frmSplash"));
    txWarn->setReadOnly(true);
    txWarn->setMinimumSize(480, 220);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lbVersion);
    buttons->addStretch();
    buttons->addWidget(cmdWhole);
    buttons->addWidget(cmdRunPhys);
    auto* box = new QVBoxLayout(this);
    box->addWidget(txWarn);
    box->addLayout(buttons);
    connect(cmdWhole, &QPushButton::clicked, this, [this] { choose(false); });
    connect(cmdRunPhys, &QPushButton::clicked, this, [this] { choose(true); });
}

void SplashForm::choose(bool physOnly) {
    physOnly_ = physOnly;
    splashDone_ = true;
    accept();
}

}  // namespace osm
