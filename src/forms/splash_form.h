#pragma once
// frmSplash: the start message, the version and the choice of mode.
#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace osm {

class SplashForm : public QDialog {
    Q_OBJECT
public:
    // The text of start_message.txt of `folder`, and the program's version.
    explicit SplashForm(const QString& message, QWidget* parent = nullptr);

    // Valid once a mode was chosen.
    bool SplashDone() const { return splashDone_; }
    bool PhysOnly() const { return physOnly_; }

    QPlainTextEdit* txWarn;
    QLabel* lbVersion;
    QPushButton* cmdWhole;
    QPushButton* cmdRunPhys;

private:
    void choose(bool physOnly);
    bool splashDone_ = false;
    bool physOnly_ = false;
};

// "Version " and the major, minor and revision numbers.
QString VersionText();

}  // namespace osm
