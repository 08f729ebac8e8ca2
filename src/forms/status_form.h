#pragma once
// frmStatus, "Controls and Model Progress": starts, pauses and stops the run,
// and shows the year and month. The run goes on inside the Start click; the
// driver's yields serve the other controls between months.
#include <QElapsedTimer>
#include <QWidget>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace osm {

struct Model;
class EntryGuard;
class RunObserver;

class StatusForm : public QWidget {
    Q_OBJECT
public:
    StatusForm(Model& m, RunObserver& observer, QWidget* parent = nullptr);

    // The reach list and the index stages, after start-up or a new Reach Breaks file.
    void SetStatusReachList();
    // The year and month of the month being run.
    void ShowProgress(const QString& year, const QString& month);
    // The driver paused the run at a year's end.
    void PausedAtYearEnd();
    // The mode and the scenario in force, shown under the title.
    void ShowScenario(const QString& mode, const QString& scenario);
    // Why the run cannot start with the boxes as they stand, "" when it can.
    QString StartProblem() const;

    QPushButton* BtStart;
    QPushButton* btPause;
    QCheckBox* chkOverlay;
    QCheckBox* chkAnnPause;
    QLineEdit* txStartYr;
    QLineEdit* txNYears;
    QComboBox* cbSelReach;
    std::array<QLineEdit*, 4> txtIndSlice{};
    QLabel* lbCurYr;
    QLabel* lbMon;
    QProgressBar* pbRun;     // months done of the run
    QLabel* lbElapsed;       // the run's time so far, and at its end
    QLabel* lbMode;
    QLabel* lbScenario;
    QLabel* lbNote;          // why an entry was refused

signals:
    // The index reach changed: the graphs are redrawn for it.
    void reachChanged();
    // A run ended, for whatever reason.
    void runEnded();

private:
    void onStart();
    void onPause();
    void onIndexStage(int i);
    void runToEnd();
    void showElapsed();

    Model& m_;
    RunObserver& observer_;
    bool filling_ = false;
    EntryGuard* startGuard_;
    EntryGuard* yearsGuard_;
    std::array<EntryGuard*, 4> stageGuards_{};
    QElapsedTimer clock_;
};

}  // namespace osm
