#include "forms/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QDialog>
#include <QFile>
#include <QMenuBar>
#include <QMessageBox>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

#include "core/model.h"
#include "core/scenario.h"
#include "core/start_up.h"
#include "forms/dump_form.h"
#include "forms/graphs_form.h"
#include "forms/hydrology/pattern_form.h"
#include "forms/hydrology/policy_form.h"
#include "forms/hydrology/temp_form.h"
#include "forms/legend_editor_form.h"
#include "forms/maps_form.h"
#include "forms/population/fpar_edit_form.h"
#include "forms/population/habitat_links_form.h"
#include "forms/population/harvest_form.h"
#include "forms/population/hatchery_form.h"
#include "forms/population/trophic_links_form.h"
#include "forms/profiles_form.h"
#include "forms/set_graphics_form.h"
#include "forms/status_form.h"
#include "hydrology/flow_engine.h"
#include "hydrology/stage_tables.h"
#include "presentation/graphics_setup.h"
#include "presentation/view_layout.h"
#include "recreation/recreation_steps.h"
#include "population/population_file.h"
#include "production/production_file.h"
#include "sediment/tributary_habitat_file.h"
#include "sediment/physical_parameters.h"

namespace osm {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }

// The status form's share of the window's width, in per cent.
constexpr double StatusWidthPct = 20.0;
// A view form holds its six charts in two columns of three.
constexpr double ViewFormAspect = 2.0 * GraphAspect / 3.0;

}  // namespace

MainWindow::MainWindow(Model& m, FileDialogs* dialogs, QWidget* parent)
    : QMainWindow(parent),
      m_(m),
      dialogs_(dialogs ? *dialogs : ownDialogs_),
      area_(new QWidget(this)),
      status_(new StatusForm(m, observer_, area_)),
      graphs_(new GraphsForm(m, area_)),
      profiles_(new ProfilesForm(m, area_)),
      maps_(new MapsForm(m, area_)) {
    connect(maps_, &MapsForm::legendEditorWanted, this, [this](int n) { ShowLegendEditor(std::max(0, n - 1)); });
    setObjectName(QStringLiteral("frmMain"));
    setCentralWidget(area_);
    observer_.SetStatus(status_);
    buildMenus();
    if (m_.main.PhysOnly) hidePhysicalOnly();
    connect(status_, &StatusForm::reachChanged, this, [this] {
        try {
            graphs_->ReplotGraphs();
        } catch (const std::exception& e) {
            ShowMessage(m_, "graphs", e.what(), "Graphs");
        }
    });
    RebuildViews();
    ShowScenario();
    resize(1280, 800);
}

void MainWindow::ShowScenario() {
    const QString mode = qs(ModeName(m_.main)), scenario = qs(ScenarioName(m_));
    setWindowTitle(QStringLiteral("Ostrel Gorge Ecosystem Model - Nov.17/98 \u2014 %1 \u2014 %2").arg(mode, scenario));
    status_->ShowScenario(mode, scenario);
}

void MainWindow::ShowUserGuide() {
    auto* guide = findChild<QDialog*>(QStringLiteral("frmUserGuide"));
    if (!guide) {
        guide = new QDialog(this);
        guide->setObjectName(QStringLiteral("frmUserGuide"));
        guide->setWindowTitle(QStringLiteral("User Guide"));
        auto* text = new QTextBrowser(guide);
        text->setObjectName(QStringLiteral("txGuide"));
        QFile file(QStringLiteral(":/docs/user-guide.md"));
        if (file.open(QIODevice::ReadOnly)) text->setMarkdown(QString::fromUtf8(file.readAll()));
        (new QVBoxLayout(guide))->addWidget(text);
        guide->resize(720, 640);
    }
    guide->show();
    guide->raise();
}

void MainWindow::ShowAbout() {
    QMessageBox::about(this, QStringLiteral("About OSM"), AboutText());
}

QString MainWindow::AboutText() const {
    return QStringLiteral("<b>Ostrel Gorge Ecosystem Model</b> (OSM) %1.%2.%3<br><br>"
                          "A monthly simulation of the river below OS Dam, from the dam to Lake Drume.<br><br>"
                          "Mode: %4<br>Program folder: %5")
        .arg(OSM_VERSION_MAJOR)
        .arg(OSM_VERSION_MINOR)
        .arg(OSM_VERSION_PATCH)
        .arg(qs(ModeName(m_.main)), qs(m_.main.ProgramFolder).toHtmlEscaped());
}

MainWindow::~MainWindow() { observer_.SetStatus(nullptr); }

QAction* MainWindow::add(QMenu* menu, const char* name, const char* caption) {
    QAction* a = menu->addAction(QString::fromUtf8(caption));
    a->setObjectName(QString::fromLatin1(name));
    entries_[a->objectName()] = a;
    return a;
}

void MainWindow::separator(QMenu* menu, const char* name) {
    QAction* a = menu->addSeparator();
    a->setObjectName(QString::fromLatin1(name));
    entries_[a->objectName()] = a;
}

QAction* MainWindow::Entry(const QString& name) const {
    const auto it = entries_.find(name);
    return it == entries_.end() ? nullptr : it->second;
}

void MainWindow::buildMenus() {
    auto menu = [this](const char* name, const char* caption, QMenu* parent = nullptr) {
        QMenu* mn = parent ? parent->addMenu(QString::fromUtf8(caption)) : menuBar()->addMenu(QString::fromUtf8(caption));
        mn->setObjectName(QString::fromLatin1(name));
        mn->menuAction()->setObjectName(QString::fromLatin1(name));
        entries_[mn->objectName()] = mn->menuAction();
        return mn;
    };
    auto on = [this](QAction* a, void (MainWindow::*f)()) { connect(a, &QAction::triggered, this, f); };

    QMenu* file = menu("mnuFile", "File");
    on(add(file, "mnuFNewRBrks", "Load New Reach Breaks File"), &MainWindow::mnuFNewRBrks_Click);
    separator(file, "mnublank0");
    on(add(file, "mnuGraphSet", "Load Graphics Setup File"), &MainWindow::mnuGraphSet_Click);
    on(add(file, "mnuSaveGraphSet", "Save Graphics Setup File"), &MainWindow::mnuSaveGraphSet_Click);
    separator(file, "mnublank1");
    on(add(file, "mnuLoadPhysPar", "Load Physical Submodel Parameters"), &MainWindow::mnuLoadPhysPar_Click);
    on(add(file, "mnuSavePhysPar", "Save Physical Submodel Parameters"), &MainWindow::mnuSavePhysPar_Click);
    separator(file, "mnublank2");
    on(add(file, "mnuLoadProdPar", "Load Chemistry/Production Submodel Parameters"), &MainWindow::mnuLoadProdPar_Click);
    on(add(file, "mnuSaveProdPar", "Save Chemistry/Production Submodel Parameters"), &MainWindow::mnuSaveProdPar_Click);
    separator(file, "mnublank99");
    on(add(file, "MnuPopParLoad", "Load Population Submodel Parameters"), &MainWindow::MnuPopParLoad_Click);
    on(add(file, "MnuSavePopPars", "Save Population Parameters"), &MainWindow::MnuSavePopPars_Click);
    separator(file, "mnublank4");
    on(add(file, "mnuLoadTribHabData", "Load Tributary Habitat Data"), &MainWindow::mnuLoadTribHabData_Click);
    on(add(file, "mnuSaveTribHabData", "Save Tributary Habitat Data"), &MainWindow::mnuSaveTribHabData_Click);
    separator(file, "mnublank6");
    on(add(file, "mnuLoadRec", "Load Recreation Submodel Parameters"), &MainWindow::mnuLoadRec_Click);
    add(file, "mnuSaveRec", "Save Recreation Submodel Parameters");
    separator(file, "mnublank5");
    on(add(file, "mnuLoadOSDExp", "Load OSD Experimental Release Sequence"), &MainWindow::mnuLoadOSDExp_Click);
    on(add(file, "mnuSaveOSDExp", "Save OSD Experimental Release Sequence"), &MainWindow::mnuSaveOSDExp_Click);
    separator(file, "mnublank65");
    on(add(file, "mnuDump", "Dump Results"), &MainWindow::mnuDump_Click);
    separator(file, "mnublank3");
    on(add(file, "mnuExit", "Exit"), &MainWindow::endProgram);

    QMenu* policy = menu("mnuPolicy", "Policies");
    on(add(policy, "mnuOSDRelease", "Set OSD Release Hydrograph (Diurnal/Spike)"), &MainWindow::mnuOSDRelease_Click);
    on(add(policy, "mnuHydSedInput", "Set OSD Monthly Hydrograph/Tributary Flow"), &MainWindow::mnuHydSedInput_Click);
    on(add(policy, "setexptemp", "Set OSD outflow temperature"), &MainWindow::setexptemp_Click);
    connect(add(policy, "MnuPopharv", "Animal harvest rates"), &QAction::triggered, this,
            [this] { populationEditor<HarvestForm>(fishing_); });
    connect(add(policy, "mnupophatch", "Hatchery production"), &QAction::triggered, this, [this] {
        populationEditor<HatcheryForm>(hatchMan_);
    });

    QMenu* par = menu("mnuPar", "Parameters");
    add(par, "mnuSed", "Sediment Budget");
    add(par, "mnubaseprod", "Aquatic Production");
    add(par, "mnuVegetation", "Riparian Vegetation");
    add(par, "mnuReachPop", "Reach Populations");
    QMenu* animal = menu("mnuAnimal", "Animal Populations", par);
    connect(add(animal, "mnupopdyn", "Population dynamics parameters"), &QAction::triggered, this, [this] {
        populationEditor<FparEditForm>(fparEdit_);
    });
    connect(add(animal, "mnupophab", "Habitat linkage relationships"), &QAction::triggered, this,
            [this] { populationEditor<HabitatLinksForm>(fishhabe_); });
    add(animal, "mnuTribHab", "Tributary/Backwater Habitat");
    connect(add(animal, "trophlink", "Trophic linkages"), &QAction::triggered, this, [this] {
        populationEditor<TrophicLinksForm>(frmPred_);
    });
    QMenu* rec = menu("mnuRecreation", "Recreation", par);
    add(rec, "mnuTrout", "Trout Angling");
    add(rec, "mnuRaft", "Rafting");
    add(rec, "mnuCultural", "Cultural");

    QMenu* view = menu("mnuGraphic", "View");
    on(add(view, "mnuSelGraphics", "Select Graphics"), &MainWindow::mnuSelGraphics_Click);
    connect(add(view, "mnuLegEd", "Legend Editor"), &QAction::triggered, this, [this] { ShowLegendEditor(0); });
    add(view, "mnuCross", "View Cross Sections and Substrate");

    QMenu* options = menu("mnuMapOptions", "Options");
    on(add(options, "mnuMapsRedraw", "RedrawMaps"), &MainWindow::redrawMaps);
    connect(add(options, "mnuMapsLegEd", "Show Legend Editor"), &QAction::triggered, this,
            [this] { ShowLegendEditor(std::max(0, maps_->PressedLegend() - 1)); });

    QMenu* help = menu("mnuHelp", "Help");
    on(add(help, "mnuUserGuide", "User Guide"), &MainWindow::ShowUserGuide);
    on(add(help, "mnuAbout", "About OSM"), &MainWindow::ShowAbout);

    // Entries whose forms are not part of the program yet stay in their place,
    // disabled.
    for (const char* later :
         {"mnuSaveRec",
          "mnuSed", "mnubaseprod", "mnuVegetation", "mnuReachPop",
          "mnuTribHab", "mnuTrout", "mnuRaft", "mnuCultural", "mnuCross"})
        Entry(QString::fromLatin1(later))->setEnabled(false);
}

void MainWindow::hidePhysicalOnly() {
    for (const char* name :
         {"mnuLoadProdPar", "mnuSaveProdPar", "mnublank99", "MnuPopParLoad", "MnuSavePopPars", "mnublank4",
          "mnuLoadTribHabData", "mnuSaveTribHabData", "mnublank6", "MnuPopharv", "mnupophatch", "mnubaseprod",
          "mnuVegetation", "mnuReachPop", "mnuAnimal", "mnupopdyn", "mnupophab", "mnuTribHab", "mnuTrout"})
        Entry(QString::fromLatin1(name))->setVisible(false);
}

void MainWindow::ChangeLayout() {
    graphs_->hide();
    profiles_->hide();
    maps_->hide();
    const bool graphsOn = m_.graphs.VisForms(1) != 0, profilesOn = m_.graphs.VisForms(3) != 0;
    const bool mapsOn = m_.graphs.VisForms(2) != 0 && m_.vectorMap.Loaded;
    observer_.SetViews(graphs_, graphsOn, profiles_, profilesOn);
    observer_.SetMaps(mapsOn ? maps_ : nullptr);
    status_->show();
    if (graphsOn) graphs_->show();
    if (mapsOn) maps_->show();
    if (profilesOn) profiles_->show();
    layOut();
}

void MainWindow::layOut() {
    const double w = area_->width(), h = area_->height();
    const double statusW = std::min(w, std::max(w * StatusWidthPct / 100.0, double(status_->minimumSizeHint().width())));
    status_->setGeometry(0, 0, static_cast<int>(statusW), static_cast<int>(h));
    std::vector<QWidget*> shown;
    for (QWidget* v : {static_cast<QWidget*>(graphs_), static_cast<QWidget*>(maps_), static_cast<QWidget*>(profiles_)})
        if (!v->isHidden()) shown.push_back(v);
    const auto rects = TileViews(static_cast<int>(shown.size()), w - statusW, h, ViewFormAspect, ViewGap);
    for (size_t k = 0; k < shown.size(); ++k)
        shown[k]->setGeometry(QRectF(statusW + rects[k].x, rects[k].y, rects[k].w, rects[k].h).toRect());
}

void MainWindow::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    layOut();
}

// A setup the views cannot show is reported; the window stays up.
void MainWindow::RebuildViews() {
    try {
        graphs_->SetupGraphs();
        graphs_->ReplotGraphs();
    } catch (const std::exception& e) {
        ShowMessage(m_, "graphs", e.what(), "Graphs");
    }
    try {
        profiles_->SetupProfiles();
        profiles_->ReplotProfiles();
    } catch (const std::exception& e) {
        ShowMessage(m_, "profiles", e.what(), "Profiles");
    }
    ChangeLayout();
    redrawMaps();
}

LegendEditorForm* MainWindow::ShowLegendEditor(int index) {
    if (!m_.vectorMap.Loaded || m_.legend.Legends.empty()) {
        ShowMessage(m_, "maps", "The maps and their legends are not available.", "Legend Editor");
        return nullptr;
    }
    auto* editor = new LegendEditorForm(m_, [this] { redrawMaps(); }, this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    editor->ShowLegend(index);
    editor->show();
    return editor;
}

// A map that cannot be drawn is reported; the window stays up.
void MainWindow::redrawMaps() {
    try {
        maps_->RedrawMaps();
    } catch (const std::exception& e) {
        ShowMessage(m_, "maps", e.what(), "Maps");
    }
}

void MainWindow::LoadGraphSetupFile(const QString& path) {
    m_.main.GrsFile = path.toStdString();
    LoadGraphSetup(m_, m_.main.GrsFile);
    // The index stages of the file (or the defaults) take effect at once.
    try {
        SetIndexSlices(m_);
    } catch (const std::exception& e) {
        ShowMessage(m_, "index stages", e.what(), "Index Stages");
    }
    status_->SetStatusReachList();
    RebuildViews();
}

// Ends the program at once, also during a run: the run stops at the top of its
// next month, a pause in force lets go, and the event loop then ends.
void MainWindow::endProgram() {
    m_.main.StopRun = true;
    m_.main.Paused = false;
    QApplication::quit();
}

void MainWindow::closeEvent(QCloseEvent* e) {
    endProgram();
    e->accept();
}

template <typename F>
void MainWindow::fileCommand(const char* title, F&& f) {
    try {
        f();
    } catch (const std::exception& e) {
        ShowMessage(m_, "file", e.what(), title);
    }
}

void MainWindow::mnuFNewRBrks_Click() {
    const QString path = dialogs_.Open(this, QStringLiteral("Open a new Reach Breaks File"), QStringLiteral("csv"),
                                       qs(m_.main.ReachFile));
    if (path.isEmpty()) return;
    fileCommand("Open a new Reach Breaks File", [&] {
        NewReachBreaks(m_, path.toStdString());
        status_->SetStatusReachList();
        RebuildViews();
    });
}

void MainWindow::mnuGraphSet_Click() {
    const QString path = dialogs_.Open(this, QStringLiteral("Load Graphics Setup File"), QStringLiteral("grs"),
                                       qs(m_.main.GrsFile));
    if (!path.isEmpty()) LoadGraphSetupFile(path);
}

void MainWindow::mnuSaveGraphSet_Click() {
    const QString path = dialogs_.Save(this, QStringLiteral("Save Graphics Setup to File"), QStringLiteral("grs"),
                                       qs(m_.main.GrsFile));
    if (path.isEmpty()) return;
    fileCommand("Save Graphics Setup to File", [&] {
        SaveGraphSetup(m_, path.toStdString());
        m_.main.GrsFile = path.toStdString();
    });
}

void MainWindow::mnuLoadPhysPar_Click() {
    const QString path = dialogs_.Open(this, QStringLiteral("Load Physical Submodel Parameter File"),
                                       QStringLiteral("phy"), qs(m_.main.PhyFile));
    if (path.isEmpty()) return;
    fileCommand("Load Physical Submodel Parameter File", [&] {
        ReadPhyFile(m_, path.toStdString());
        m_.main.PhyFile = path.toStdString();
    });
}

void MainWindow::mnuSavePhysPar_Click() {
    const QString path = dialogs_.Save(this, QStringLiteral("Save Physical Submodel Parameters to File"),
                                       QStringLiteral("phy"), qs(m_.main.PhyFile));
    if (path.isEmpty()) return;
    fileCommand("Save Physical Submodel Parameters to File", [&] {
        WritePhyFile(m_, path.toStdString());
        m_.main.PhyFile = path.toStdString();
    });
}

void MainWindow::mnuLoadProdPar_Click() {
    const QString path = dialogs_.Open(this, QStringLiteral("Load Chemistry/Production Submodel Parameter File"),
                                       QStringLiteral("bhp"), qs(m_.main.BhpFile));
    if (path.isEmpty()) return;
    fileCommand("Load Chemistry/Production Submodel Parameter File", [&] {
        ReadBhpFile(m_, path.toStdString());
        m_.main.BhpFile = path.toStdString();
    });
}

void MainWindow::mnuSaveProdPar_Click() {
    const QString path = dialogs_.Save(this, QStringLiteral("Save Production Submodel Parameters"),
                                       QStringLiteral("bhp"), qs(m_.main.BhpFile));
    if (path.isEmpty()) return;
    fileCommand("Save Production Submodel Parameters", [&] {
        WriteBhpFile(m_, path.toStdString());
        m_.main.BhpFile = path.toStdString();
    });
}

// Loads and saves of the population and tributary habitat files: one pattern.
void MainWindow::parameterFile(bool load, const char* title, const char* ext, std::string& current,
                               const std::function<void(const std::string&)>& action) {
    const QString path = load ? dialogs_.Open(this, QString::fromLatin1(title), QString::fromLatin1(ext), qs(current))
                              : dialogs_.Save(this, QString::fromLatin1(title), QString::fromLatin1(ext), qs(current));
    if (path.isEmpty()) return;
    fileCommand(title, [&] {
        action(path.toStdString());
        current = path.toStdString();
    });
}

void MainWindow::MnuPopParLoad_Click() {
    parameterFile(true, "Load Population Submodel Parameter File", "fis", m_.main.FisFile, [&](const std::string& p) {
        ReadPopFile(m_, p);
        emit populationFileLoaded();
    });
}

void MainWindow::MnuSavePopPars_Click() {
    parameterFile(false, "Save Population Submodel Parameters", "fis", m_.main.FisFile,
                  [&](const std::string& p) { WritePopFile(m_, p); });
}

void MainWindow::mnuLoadTribHabData_Click() {
    parameterFile(true, "Load Tributary Habitat Data", "trb", m_.main.TrbFile,
                  [&](const std::string& p) { ReadTrbFile(m_, p); });
}

void MainWindow::mnuSaveTribHabData_Click() {
    parameterFile(false, "Save Tributary Habitat Information", "trb", m_.main.TrbFile,
                  [&](const std::string& p) { WriteTrbFile(m_, p); });
}

void MainWindow::mnuLoadRec_Click() {
    const QString path = dialogs_.Open(this, QStringLiteral("Load Recreation Submodel Parameter File"),
                                       QStringLiteral("rec"), qs(m_.main.RecFile));
    if (path.isEmpty()) return;
    fileCommand("Load Recreation Submodel Parameter File", [&] {
        ReadRafting(m_, path.toStdString());
        ReadAnglingPars(m_, path.toStdString());
        LoadRafting(m_);
        m_.main.RecFile = path.toStdString();
    });
}

void MainWindow::mnuLoadOSDExp_Click() {
    const QString path = dialogs_.Open(this, QStringLiteral("Load OSD Experimental Release Sequence File"),
                                       QStringLiteral("exp"), qs(InFolder(m_, m_.main.ExpFile)));
    if (path.isEmpty()) return;
    fileCommand("Load OSD Experimental Release Sequence File", [&] {
        LoadExp(m_, path.toStdString());
        m_.main.ExpFile = path.toStdString();
    });
    ShowScenario();
}

void MainWindow::mnuSaveOSDExp_Click() {
    const QString path = dialogs_.Save(this, QStringLiteral("Save OSD Experimental Release Sequence to File"),
                                       QStringLiteral("exp"), qs(InFolder(m_, m_.main.ExpFile)));
    if (path.isEmpty()) return;
    fileCommand("Save OSD Experimental Release Sequence to File", [&] {
        SaveExp(m_, path.toStdString());
        m_.main.ExpFile = path.toStdString();
    });
    ShowScenario();
}

void MainWindow::mnuDump_Click() {
    DumpForm f(m_, dialogs_, this);
    f.exec();
}

void MainWindow::mnuSelGraphics_Click() {
    auto* f = new SetGraphicsForm(m_, this);
    f->setAttribute(Qt::WA_DeleteOnClose);
    connect(f, &SetGraphicsForm::applied, this, &MainWindow::RebuildViews);
    f->show();
}

// The policy editors stay open beside a run: what they change takes effect from
// the run's next month.
template <typename F>
void MainWindow::showForm(QPointer<QWidget>& form, F&& make) {
    if (!form) {
        try {
            form = make();
        } catch (const std::exception& e) {
            ShowMessage(m_, "form", e.what());
            return;
        }
        form->setAttribute(Qt::WA_DeleteOnClose);
    }
    form->show();
    form->raise();
    form->activateWindow();
}

void MainWindow::mnuOSDRelease_Click() {
    showForm(policy_, [this] {
        auto* form = new PolicyForm(m_, dialogs_, this);
        connect(form, &PolicyForm::policyChanged, this, &MainWindow::ShowScenario);
        return form;
    });
}

void MainWindow::mnuHydSedInput_Click() {
    showForm(patterns_, [this] { return new PatternForm(m_, this); });
}

void MainWindow::setexptemp_Click() {
    showForm(temp_, [this] { return new TempForm(m_, this); });
}

template <typename Form>
void MainWindow::populationEditor(QPointer<QWidget>& form) {
    showForm(form, [this] {
        auto* f = new Form(m_, this);
        connect(this, &MainWindow::populationFileLoaded, f, &Form::ShowPars);
        return f;
    });
}

}  // namespace osm
