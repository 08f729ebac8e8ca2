#pragma once
// frmPolicy, "Set OSD Release Hydrograph": the diurnal scenario of each year,
// the power value of the scenario in hand against the no-action one, the flow
// parameters of a new scenario and the pipeline that makes it, the spike
// flows, and the release policy file. Edits go straight into the model's
// tables, so a run takes them from its next month.
#include <QWidget>

#include <array>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace osm {

struct Model;
class DiurnalPicture;
class FieldCheck;
class FileDialogs;
class HourAxis;
class StepButtons;

class PolicyForm : public QWidget {
    Q_OBJECT
public:
    PolicyForm(Model& m, FileDialogs& dialogs, QWidget* parent = nullptr);

    void GetAnnLoss();
    void LoadGrid();
    void GetYMax();
    void DrawDiurnal();
    void LoadFlowParameters();
    void ReadFlowParameters();
    void SpikeVolume();
    void AddSpike(int year, int month);
    void FillSpikeList();
    void fileScenarios_Click();
    void cmdProcessHydro_Click();
    void cmdCopy_Click();
    void cmdPast_Click();
    void cmdDelete_Click();
    void cmdAll_Click();
    void btAddSpike_Click();
    void btClearSpike_Click();
    void opSpikeType_Click(int index);
    void btOk_Click();
    // The chosen diurnal pattern to the selected years (what a drag along the
    // year grid does).
    void ApplyDiurnalPattern();
    void LoadPolicyFile(const QString& path);
    void SavePolicyFile(const QString& path);
    // Stops the pipeline at its next step; the old scenario file stays.
    void CancelProcess() { cancel_ = true; }

    QListWidget* fileScenarios;
    QTableWidget* gdYear;
    QListWidget* lstDiurnalPattern;
    DiurnalPicture* picDiurnal;
    HourAxis* pcXAxis;
    QComboBox* cbMon;
    QComboBox* cbMonRelVol;
    QComboBox* cbReach;
    QLabel* lbYMax;
    QLabel* lbYMin;
    QLabel* lbLoss;
    QLabel* lbAnnLoss;
    QLabel* lbPowerValue;
    QLineEdit* txMaxDailyFlow;
    QLineEdit* txUpRamp;
    QLineEdit* txDownRamp;
    QCheckBox* chkFlexiFlowFlag;
    std::array<QLineEdit*, 3> txFlexiFlow1{};
    std::array<QLineEdit*, 3> txFlexiFlow2{};
    QTableWidget* gdMinDailyFlow;
    QTableWidget* gdMaxDailyFlowChange;
    QLabel* lbDayChange;
    QPushButton* cmdCopy;
    QPushButton* cmdPast;
    QPushButton* cmdDelete;
    QPushButton* cmdAll;
    QLineEdit* txScenDesc;
    QLineEdit* txFileName;
    QPushButton* cmdProcessHydro;
    QPushButton* cmdCancel;
    QLabel* lbProgVol;
    QLabel* lbProgMon;
    QProgressBar* pbProcess;
    std::array<QRadioButton*, 2> opSpikeType{};
    QLineEdit* txSpikeYr;
    QLineEdit* txSpikeMon;
    StepButtons* spSpikeYr;
    StepButtons* spSpikeMon;
    QPushButton* btAddSpike;
    QPushButton* btClearSpike;
    QListWidget* lsSpikes;
    QLabel* lbMonVol;
    QLineEdit* txSpikeMag;
    QLineEdit* txSpikeDur;
    QLineEdit* txSpikeStDay;
    QLabel* lbSpikeVol;
    QLabel* lbExcess;
    QPushButton* btOk;
    QPushButton* btLoadPolicy;
    QPushButton* btSavePolicy;
    QLabel* lbWhy;

signals:
    // The scenario list or the policy changed (a new scenario, a policy file).
    void policyChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    QWidget* scenarioPage();
    QWidget* flowPage();
    QWidget* spikePage();
    void fillScenarioLists();
    void fillSpikeFlow();
    void showMonthVolume();
    bool takeSpikeFlow();
    QTableWidget* activeGrid() const;
    std::vector<std::vector<QString>> clip_;

    Model& m_;
    FileDialogs& dialogs_;
    FieldCheck* check_;
    QTableWidget* active_ = nullptr;
    bool processing_ = false;
    bool cancel_ = false;
};

}  // namespace osm
