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
#include "core/workbench.h"

namespace tarvokin::ui {

using namespace F_PREFER;

namespace {

// Text fields by number: each change goes to its run value at once.
CellEdit* prefField(PreferencesDialog* owner, SheetBridge& b, Workbench& wb, Cell c, int number) {
    auto* e = new CellEdit(b, c);
    QObject::connect(e, &QLineEdit::textEdited, owner,
                     [&wb, number] { preferenceFieldChanged(wb.settings, wb.sheet, number); });
    return e;
}

CellCheck* prefCheck(PreferencesDialog* owner, SheetBridge& b, Workbench& wb, Cell c, const char* name,
                     const QString& caption) {
    auto* k = new CellCheck(b, c, caption);
    QObject::connect(k, &QCheckBox::clicked, owner, [&wb, name] {
        preferenceClicked(wb.settings, wb.sheet, wb.settingsFilePath(), name);
    });
    return k;
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
    for (int i = 0; i < 2; ++i) {
        auto* r = new QRadioButton(captions[i]);
        r->setObjectName("Option1");
        r->setProperty("index", i);
        r->setChecked(wb_.sheet.val(Option1[i]) != 0.0);
        connect(r, &QRadioButton::clicked, this, [this, i] {
            for (int k = 0; k < 2; ++k) wb_.sheet.set(Option1[k], k == i ? "1" : "0");
            preferenceClicked(wb_.settings, wb_.sheet, wb_.settingsFilePath(), "Option1", i);
        });
        options->addWidget(r);
    }
    gf->addRow(QStringLiteral("Centrage"), options);
    tabs->addTab(general, QStringLiteral("Général"));

    auto* xfoil = new QWidget;
    auto* xf = new QFormLayout(xfoil);
    xf->addRow(QStringLiteral("Nbre d'itérations"), prefField(this, b, wb, Text3, 3));
    auto* pathRow = new QHBoxLayout;
    pathRow->addWidget(prefField(this, b, wb, Text4, 4), 1);
    auto* browse = new QPushButton(QStringLiteral("..."));
    browse->setObjectName("Command1");
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString f = QFileDialog::getOpenFileName(this, QStringLiteral("XFoil"), QString(),
                                                       QStringLiteral("XFoil (xfoil*);;All Files (*)"));
        if (f.isEmpty()) return;
        wb_.sheet.set(Text4, ss(f));
        preferenceFieldChanged(wb_.settings, wb_.sheet, 4);
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
    connect(choose, &QPushButton::clicked, this, [this] {
        const QString start = qs((wb_.home() / "DATA").string());
        const QString f = QFileDialog::getOpenFileName(this, QStringLiteral("Fichiers de Profils"), start,
                                                       QStringLiteral("Fichiers de Profils (*.DAT *.dat)"));
        if (f.isEmpty()) return;
        wb_.sheet.set(Text9, ss(f));
        // A generic row is an alias of an outline file: point it at the chosen one.
        const int row = wb_.sheet.listIndex(Combo1);
        if (row >= 0 && static_cast<size_t>(row) < wb_.catalogue.rows.size() &&
            wb_.catalogue.rows[static_cast<size_t>(row)].Profil.find("Générique") != std::string::npos) {
            wb_.catalogue.rows[static_cast<size_t>(row)].Path = ss(f);
        }
    });
    fileRow->addWidget(choose);
    pf->addRow(QStringLiteral("Fichier"), fileRow);
    connect(airfoil, &QComboBox::activated, this, [this](int row) {
        if (row >= 0 && static_cast<size_t>(row) < wb_.catalogue.rows.size())
            wb_.sheet.set(Text9, wb_.catalogue.rows[static_cast<size_t>(row)].Path);
    });
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
