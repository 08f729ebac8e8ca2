#pragma once
// frmDump, "Save Results to ASCII File": which rows of the graph table and which
// reaches go into the results dump. The choice stays in the model while the
// program runs.
#include <QDialog>

class QTableWidget;
class QPushButton;

namespace osm {

struct Model;
class FileDialogs;

class DumpForm : public QDialog {
    Q_OBJECT
public:
    DumpForm(Model& m, FileDialogs& dialogs, QWidget* parent = nullptr);

    // Toggles "X" on every selected row of a grid.
    static void ToggleSelected(QTableWidget* grid);

    QTableWidget* g;
    QTableWidget* gR;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdOK_Click();

    Model& m_;
    FileDialogs& dialogs_;
};

}  // namespace osm
