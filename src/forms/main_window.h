#pragma once
// frmMain: the container window. Its menus open forms and load or save files;
// the status form and the result views are tiled inside it.
#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <map>
#include <memory>

#include "forms/file_dialogs.h"
#include "forms/forms_observer.h"

class QAction;
class QMenu;

namespace osm {

struct Model;
class GraphsForm;
class LegendEditorForm;
class MapsForm;
class ProfilesForm;
class StatusForm;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // `m` has been started; `dialogs` answers the file dialogs (the program's own
    // when null).
    explicit MainWindow(Model& m, FileDialogs* dialogs = nullptr, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Hides the result views, then tiles the status form and the views that
    // VisForms names in the window.
    void ChangeLayout();
    // Reads a graphics setup file and rebuilds the views for it (the defaults
    // when it fails to load).
    void LoadGraphSetupFile(const QString& path);
    // The views rebuilt after a change of the graphics setup.
    void RebuildViews();
    // Shows the mode and the scenario in force in the title and on the status
    // form; called again whenever the scenario changes (a release file loaded, a
    // policy applied).
    void ShowScenario();
    // Help: the user guide and the About box.
    void ShowUserGuide();
    void ShowAbout();
    // The About box's text: version, mode and program folder.
    QString AboutText() const;

    // Opens the legend editor on the legend at `index` (0-based); null when
    // the maps are not available.
    LegendEditorForm* ShowLegendEditor(int index);

    // A menu entry by its control name ("mnuGraphSet", "mnublank0", ...).
    QAction* Entry(const QString& name) const;
    StatusForm* Status() const { return status_; }
    GraphsForm* Graphs() const { return graphs_; }
    ProfilesForm* Profiles() const { return profiles_; }
    MapsForm* Maps() const { return maps_; }

signals:
    // A population file was loaded: the open population editors show it.
    void populationFileLoaded();

protected:
    void resizeEvent(QResizeEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    void buildMenus();
    QAction* add(QMenu* menu, const char* name, const char* caption);
    void separator(QMenu* menu, const char* name);
    void hidePhysicalOnly();
    void layOut();
    void endProgram();
    // Runs a file command, showing its failure as a model message.
    template <typename F>
    void fileCommand(const char* title, F&& f);

    void mnuFNewRBrks_Click();
    void mnuGraphSet_Click();
    void mnuSaveGraphSet_Click();
    void mnuLoadPhysPar_Click();
    void mnuSavePhysPar_Click();
    void mnuLoadProdPar_Click();
    void mnuSaveProdPar_Click();
    void MnuPopParLoad_Click();
    void MnuSavePopPars_Click();
    void mnuLoadTribHabData_Click();
    void mnuSaveTribHabData_Click();
    void parameterFile(bool load, const char* title, const char* ext, std::string& current,
                       const std::function<void(const std::string&)>& action);
    void mnuLoadRec_Click();
    void mnuLoadOSDExp_Click();
    void mnuSaveOSDExp_Click();
    void mnuDump_Click();
    void mnuSelGraphics_Click();
    void mnuOSDRelease_Click();
    void mnuHydSedInput_Click();
    void setexptemp_Click();
    // Shows a population editor, which shows a file loaded while it is open.
    template <typename Form>
    void populationEditor(QPointer<QWidget>& form);
    // Shows the one open instance of a form, made by `make` when there is none.
    template <typename F>
    void showForm(QPointer<QWidget>& form, F&& make);
    void redrawMaps();

    Model& m_;
    FileDialogs ownDialogs_;
    FileDialogs& dialogs_;
    FormsRunObserver observer_;
    QWidget* area_;
    StatusForm* status_;
    GraphsForm* graphs_;
    ProfilesForm* profiles_;
    MapsForm* maps_;
    std::map<QString, QAction*> entries_;
    QPointer<QWidget> policy_, patterns_, temp_;
    QPointer<QWidget> fparEdit_, frmPred_, fishhabe_, fishing_, hatchMan_;
};

}  // namespace osm
