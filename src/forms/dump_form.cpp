#include "forms/dump_form.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/model.h"
#include "core/numbers.h"
#include "forms/file_dialogs.h"
#include "presentation/graph_table.h"
#include "presentation/results_dump.h"

namespace osm {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }
const QString Mark = QStringLiteral("X");

QTableWidget* makeGrid(const QString& heading, QWidget* parent) {
    auto* grid = new QTableWidget(0, 2, parent);
    grid->setHorizontalHeaderLabels({heading, QStringLiteral("X=Save")});
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->verticalHeader()->setVisible(false);
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 6);
    grid->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    grid->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    return grid;
}

void addRow(QTableWidget* grid, const QString& label, bool on) {
    const int row = grid->rowCount();
    grid->insertRow(row);
    grid->setItem(row, 0, new QTableWidgetItem(label));
    auto* mark = new QTableWidgetItem(on ? Mark : QString());
    mark->setTextAlignment(Qt::AlignCenter);
    grid->setItem(row, 1, mark);
}

bool marked(const QTableWidget* grid, int row) { return grid->item(row, 1)->text() == Mark; }

}  // namespace

DumpForm::DumpForm(Model& m, FileDialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      g(makeGrid(QStringLiteral("Variable"), this)),
      gR(makeGrid(QStringLiteral("Reach"), this)),
      cmdOK(new QPushButton(QStringLiteral("OK"), this)),
      cmdCancel(new QPushButton(QStringLiteral("Cancel"), this)),
      m_(m),
      dialogs_(dialogs) {
    setObjectName(QStringLiteral("frmDump"));
    setWindowTitle(QStringLiteral("Save Results to ASCII File"));
    const Graphs& gr = m_.graphs;
    int row = 0;
    for (int v = 1; v <= gr.NVars; ++v)
        for (int s = 1; s <= gr.VarSets(v); ++s, ++row) addRow(g, qs(GraphRowLabel(gr, v, s)), gr.DumpVar(row));
    const Main& mn = m_.main;
    for (int r = mn.FirstReach; r <= mn.LastReach; ++r)
        addRow(gR, qs(NumText(r - mn.FirstReach + 1) + " - " + mn.ReachLabel(r)), gr.DumpReach(r));
    for (QTableWidget* grid : {g, gR}) grid->viewport()->installEventFilter(this), grid->installEventFilter(this);

    auto* grids = new QHBoxLayout;
    grids->addWidget(g, 3);
    grids->addWidget(gR, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* box = new QVBoxLayout(this);
    box->addWidget(
        new QLabel(QStringLiteral("Select variables/reaches to save to file. Click on tables to toggle on/off."), this));
    box->addLayout(grids);
    box->addLayout(buttons);
    resize(720, 520);

    connect(cmdOK, &QPushButton::clicked, this, &DumpForm::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void DumpForm::ToggleSelected(QTableWidget* grid) {
    for (const QModelIndex& index : grid->selectionModel()->selectedRows()) {
        QTableWidgetItem* mark = grid->item(index.row(), 1);
        mark->setText(mark->text() == Mark ? QString() : Mark);
    }
    grid->clearSelection();
}

// A click or a dragged range toggles its rows when the mouse is let go; the
// space bar toggles the rows chosen with the keyboard.
bool DumpForm::eventFilter(QObject* watched, QEvent* event) {
    for (QTableWidget* grid : {g, gR}) {
        if (watched == grid->viewport() && event->type() == QEvent::MouseButtonRelease) ToggleSelected(grid);
        if (watched == grid && event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
            ToggleSelected(grid);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void DumpForm::cmdOK_Click() {
    Graphs& gr = m_.graphs;
    bool anyVar = false, anyReach = false;
    for (int row = 0; row < g->rowCount(); ++row) anyVar = (gr.DumpVar(row) = marked(g, row)) || anyVar;
    for (int row = 0; row < gR->rowCount(); ++row)
        anyReach = (gr.DumpReach(m_.main.FirstReach + row) = marked(gR, row)) || anyReach;
    if (!anyVar || !anyReach) {
        ShowMessage(m_, "results dump",
                    "No variables or reaches selected. Select variables/reaches and click on OK or click on "
                    "Cancel button to Exit.",
                    "Save Results to ASCII File");
        return;
    }
    const QString path = dialogs_.Save(this, QStringLiteral("Save Results to File"), QStringLiteral("out"),
                                       QString::fromStdString(m_.main.OutFile));
    if (path.isEmpty()) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        DumpResults(m_, path.toStdString());
        m_.main.OutFile = path.toStdString();
    } catch (const std::exception& e) {
        ShowMessage(m_, "results dump", e.what(), "Save Results to File");
    }
    QApplication::restoreOverrideCursor();
    accept();
}

}  // namespace osm
