#include "project/ui/tool_windows.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "core/cells.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/entry_controls.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"
#include "entry/entry_path.h"
#include "project/new_model.h"
#include "views/ui/plan_widget.h"

namespace tarvokin::ui {

namespace {

QWidget* field(SheetBridge& b, QFormLayout* f, const char* caption, Cell c, const QString& tip = {}) {
    QWidget* w = nullptr;
    if (cellTable()[c.id].kind == CellKind::List) w = new CellCombo(b, c);
    else w = new CellEdit(b, c);
    w->setObjectName(QString::fromLatin1(cellTable()[c.id].name));
    if (!tip.isEmpty()) w->setToolTip(tip);
    f->addRow(QString::fromUtf8(caption), w);
    return w;
}

QGroupBox* frame(const char* title, QFormLayout*& f) {
    auto* g = new QGroupBox(QString::fromUtf8(title));
    f = new QFormLayout(g);
    return g;
}

}  // namespace

WizardDialog::WizardDialog(Workbench& wb, SheetBridge& bridge, QWidget* parent)
    : QDialog(parent), wb_(wb), bridge_(bridge) {
    using namespace F_WIZZARD;
    setObjectName("F_WIZZARD");
    setWindowTitle(QStringLiteral("Wizzard"));
    setModal(true);
    auto* root = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    root->addLayout(left);
    QFormLayout* f = nullptr;
    left->addWidget(frame("Modèle", f));
    field(bridge, f, "Nom", Text1);
    field(bridge, f, "Masse mini", Text13);
    field(bridge, f, "Masse maxi", Text14);
    left->addWidget(frame("Aile", f));
    field(bridge, f, "Profil", CB_1);
    field(bridge, f, "Corde emplanture", Text15);
    field(bridge, f, "Corde saumon", Text16);
    field(bridge, f, "Flèche", Text17);
    field(bridge, f, "Dièdre", Text18);
    field(bridge, f, "Envergure 1/2 aile", Text19);
    field(bridge, f, "Distance Nez / BA", Text20);
    field(bridge, f, "Position", Combo1);
    auto* mid = new QVBoxLayout;
    root->addLayout(mid);
    mid->addWidget(frame("Stab", f));
    field(bridge, f, "Corde emplanture", Text2);
    field(bridge, f, "Corde saumon", Text3);
    field(bridge, f, "Flèche", Text4);
    field(bridge, f, "Dièdre", b21,
          QString::fromUtf8("Si stab \"plat\", angle = 180° Dans le cas d'un stab en Vé, les projections des surfaces "
                            "du stab sont prises en compte pour le volume de stab et la marge statique."));
    field(bridge, f, "Envergure 1/ stab", Text5);
    field(bridge, f, "Distance  BA aile / BA Stab", Text6);
    field(bridge, f, "Position Stab", Combo2);
    mid->addWidget(frame("Dérive", f));
    field(bridge, f, "Corde emplanture", Text7);
    field(bridge, f, "Corde saumon", Text8);
    field(bridge, f, "Hauteur", Text9);
    mid->addWidget(frame("Fuselage", f));
    field(bridge, f, "Type", Combo3);
    field(bridge, f, "Longueur", Text10);
    field(bridge, f, "Hauteur max", Text11);
    field(bridge, f, "Largeur max", Text12);

    auto* right = new QVBoxLayout;
    root->addLayout(right, 1);
    preview_ = new PlanWidget([&wb] { return WizardPreview(wb.sheet); });
    preview_->setObjectName("Preview_Wizard");
    preview_->setMinimumSize(360, 420);
    right->addWidget(preview_, 1);
    auto* ok = new QPushButton(QStringLiteral("Valider"));
    ok->setObjectName("Command1");
    right->addWidget(ok);
    // The preview follows every figure as it is typed.
    auto redraw = new DeferredRedraw(this, [this] { preview_->refresh(); });
    for (Cell c : {Text12, Text10, Text15, Text16, Text17, Text19, Text20, Text2, Text3, Text4, Text5, Text6, Text7})
        bridge.watch(c, this, [redraw] { redraw->request(); });
    connect(ok, &QPushButton::clicked, this, [this] {
        const std::string before = wb_.projectFilePath;
        const bool done = bridge_.enter([this] { Click(wb_, "F_WIZZARD", "Command1"); });
        if (done && wb_.projectFilePath != before) accept();
    });
}

ConverterWindow::ConverterWindow(Workbench& wb, SheetBridge& bridge, QWidget* parent) : QWidget(parent) {
    (void)wb;
    setObjectName("F_CONVERT");
    setWindowTitle(QString::fromUtf8("Convertisseur d'unités"));
    auto* f = new QFormLayout(this);
    field(bridge, f, "Grandeur", F_CONVERT::Combo1);
    field(bridge, f, "Valeur", F_CONVERT::Text1);
    field(bridge, f, "De", F_CONVERT::Combo2);
    field(bridge, f, "En", F_CONVERT::Combo3);
    auto* result = new CellLabel(bridge, F_CONVERT::L_Result);
    result->setObjectName("L_Result");
    QFont bold = result->font();
    bold.setBold(true);
    result->setFont(bold);
    f->addRow(QString::fromUtf8("Résultat"), result);
}

NavigatorWindow::NavigatorWindow(std::function<void(const QString&, const QString&)> open, QWidget* parent)
    : QWidget(parent) {
    setObjectName("frmTrv");
    setWindowTitle(QStringLiteral("Navigateur"));
    auto* v = new QVBoxLayout(this);
    tree_ = new QTreeWidget;
    tree_->setHeaderLabels({QStringLiteral("Fenêtre / champ")});
    v->addWidget(tree_);
    std::map<Form, QTreeWidgetItem*> forms;
    for (const CellDef& d : cellTable()) {
        if (d.tagProperty || d.form == Form::F_Main) continue;
        QTreeWidgetItem*& top = forms[d.form];
        if (!top) {
            top = new QTreeWidgetItem(tree_, {QString::fromLatin1(formName(d.form))});
            top->setData(0, Qt::UserRole, QString::fromLatin1(formName(d.form)));
        }
        QString name = QString::fromLatin1(d.name);
        if (d.index >= 0) name += QStringLiteral("(%1)").arg(d.index);
        auto* item = new QTreeWidgetItem(top, {name});
        item->setData(0, Qt::UserRole, QString::fromLatin1(formName(d.form)));
        item->setData(0, Qt::UserRole + 1, name);
    }
    connect(tree_, &QTreeWidget::itemDoubleClicked, this, [open](QTreeWidgetItem* item, int) {
        open(item->data(0, Qt::UserRole).toString(), item->data(0, Qt::UserRole + 1).toString());
    });
    resize(320, 520);
}

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setObjectName("FrmHlp");
    setWindowTitle(QStringLiteral("A propos de TARVOKIN"));
    auto* v = new QVBoxLayout(this);
    auto* text = new QTextBrowser;
    text->setOpenExternalLinks(true);
    text->setHtml(QString::fromUtf8(
        "<h2>TARVOKIN</h2><p>version 3.1</p>"
        "<p>Atelier d'avant-projet de modèles réduits radiocommandés.</p>"
        "<h3>Ce qui est livré avec</h3><ul>"
        "<li><b>Qt 6</b> : bibliothèque d'interface, licence GNU LGPL v3 (The Qt Company et contributeurs).</li>"
        "<li><b>XFOIL</b> de Mark Drela et Harold Youngren (MIT), licence GNU GPL, programme externe appelé "
        "pour les polaires.</li>"
        "<li><b>zlib</b> de Jean-loup Gailly et Mark Adler : compression des classeurs, licence zlib.</li>"
        "<li><b>Profils</b> : les douze profils livrés (Selig, Eppler, Drela, Wortmann, Clark Y...) sont des "
        "profils publiés par leurs auteurs ; leurs polaires ont été calculées par XFOIL pour ce programme "
        "(<code>scripts/compute-shipped-polars.sh</code>).</li>"
        "<li><b>Moteurs</b> : <code>DATA/MOTEURS.CSV</code> d'après le script de données "
        "<code>Tucano/dados_motores.m</code> du dépôt public daanrsantiago/tucanus (2018), caractéristiques "
        "publiées par les fabricants AXI, Scorpion et Emax.</li></ul>"));
    v->addWidget(text);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    v->addWidget(box);
    resize(520, 420);
}

}  // namespace tarvokin::ui
