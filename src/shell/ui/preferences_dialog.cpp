#include "shell/ui/preferences_dialog.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "core/text_case.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/sheet_bridge.h"
#include "core/ui/entry_controls.h"
#include "core/workbench.h"
#include "entry/entry_path.h"

namespace tarvokin::ui {

using namespace F_PREFER;

namespace {

// Each field and switch forwards to the window's logic, which takes it into
// the run's settings at once.
CellEdit* prefField(PreferencesDialog*, SheetBridge& b, Workbench&, Cell c, int) { return new CellEdit(b, c); }

CellCheck* prefCheck(PreferencesDialog*, SheetBridge& b, Workbench&, Cell c, const char*, const QString& caption) {
    return new CellCheck(b, c, caption);
}

// A file chosen by "..." handed to the button's handler.
void chosen(SheetBridge& b, const char* button, const QString& file) {
    if (file.isEmpty()) return;
    Workbench& wb = b.workbench();
    Action a;
    a.form = "F_PREFER";
    a.control = button;
    a.text = ss(file);
    b.enter([&] { Perform(wb, a); });
}

}  // namespace

PreferencesDialog::PreferencesDialog(Workbench& wb, SheetBridge& b, QWidget* parent) : QDialog(parent), wb_(wb) {
    setObjectName("F_PREFER");
    setWindowTitle(QStringLiteral("Préférences"));
    showPreferences(wb_.settings, wb_.sheet);
    auto* tabs = new QTabWidget;

    auto* general = new QWidget;
    auto* gf = new QFormLayout(general);
    gf->addRow(QStringLiteral("Température de référence"), prefField(this, b, wb, Text1, 1));
    gf->addRow(QStringLiteral("Altitude de référence"), prefField(this, b, wb, Text2, 2));
    gf->addRow(prefCheck(this, b, wb, Check1, "Check1", QStringLiteral("Rappeler le dernier projet au démarrage")));
    gf->addRow(prefCheck(this, b, wb, Check3, "Check3", QStringLiteral("Toujours sauvegarder le projet en quittant")));
    gf->addRow(prefCheck(this, b, wb, Check2, "Check2", QStringLiteral("Dessin des Profils avec Points")));
    gf->addRow(prefCheck(this, b, wb, Check4, "Check4", QStringLiteral("Dessin des Graphiques avec Points")));
    auto* options = new QHBoxLayout;
    const QString captions[2] = {QStringLiteral("Aile Mobile"), QStringLiteral("Fuselage mobile")};
    for (int i = 0; i < 2; ++i) options->addWidget(new CellRadio(b, Option1[i], captions[i]));
    gf->addRow(QStringLiteral("Centrage"), options);
    tabs->addTab(general, QStringLiteral("Général"));

    auto* xfoil = new QWidget;
    auto* xf = new QFormLayout(xfoil);
    xf->addRow(QStringLiteral("Nbre d'itérations"), prefField(this, b, wb, Text3, 3));
    auto* pathRow = new QHBoxLayout;
    pathRow->addWidget(prefField(this, b, wb, Text4, 4), 1);
    auto* browse = new QPushButton(QStringLiteral("..."));
    browse->setObjectName("Command1");
    connect(browse, &QPushButton::clicked, this, [this, &b] {
        chosen(b, "Command1", QFileDialog::getOpenFileName(this, QStringLiteral("XFoil"), QString(),
                                                           QStringLiteral("XFoil (xfoil*);;All Files (*)")));
    });
    pathRow->addWidget(browse);
    xf->addRow(QStringLiteral("Path"), pathRow);
    xf->addRow(QStringLiteral("Viscosité"), prefField(this, b, wb, Text5, 5));
    xf->addRow(prefCheck(this, b, wb, Check5, "Check5", QStringLiteral("Adoucir le contour")));
    xf->addRow(QStringLiteral("Cz de départ"), prefField(this, b, wb, Text6, 6));
    xf->addRow(QStringLiteral("Cz final"), prefField(this, b, wb, Text7, 7));
    xf->addRow(QStringLiteral("Incrément"), prefField(this, b, wb, Text8, 8));
    tabs->addTab(xfoil, QStringLiteral("XFOIL"));

    auto* generic = new QWidget;
    auto* pf = new QFormLayout(generic);
    auto* airfoil = new CellCombo(b, Combo1);
    pf->addRow(QStringLiteral("Profil"), airfoil);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(new CellEdit(b, Text9), 1);
    auto* choose = new QPushButton(QStringLiteral("..."));
    choose->setObjectName("Command2");
    connect(choose, &QPushButton::clicked, this, [this, &b] {
        const QString start = qs((wb_.home() / "DATA").string());
        chosen(b, "Command2", QFileDialog::getOpenFileName(this, QStringLiteral("Fichiers de Profils"), start,
                                                           QStringLiteral("Fichiers de Profils (*.DAT *.dat)")));
    });
    fileRow->addWidget(choose);
    pf->addRow(QStringLiteral("Fichier"), fileRow);
    tabs->addTab(generic, QStringLiteral("Polaires Génériques"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* top = new QVBoxLayout(this);
    top->addWidget(tabs);
    top->addWidget(buttons);
}

void PreferencesDialog::done(int result) {
    writePreferencesAtClose(wb_.settings, wb_.settingsFilePath());
    QDialog::done(result);
}

}  // namespace tarvokin::ui
