#include "core/ui/language_apply.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLibraryInfo>
#include <QTranslator>
#include <QLayout>
#include <QMenu>
#include <QPointer>
#include <QRadioButton>
#include <QRegularExpression>
#include <QCheckBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <map>
#include <set>

#include "core/language.h"
#include "core/settings.h"
#include "core/translations.h"
#include "core/ui/chart_panel.h"
#include "core/workbench.h"

namespace tarvokin::ui {

namespace {

bool hasLetter(const QString& s) {
    for (QChar c : s)
        if (c.isLetter()) return true;
    return false;
}

// Qt's own parts of a control (the close button of a dock, the line edit of a
// spin box, the stack of a tab control...) carry names starting with "qt_".
bool isToolkitPart(const QObject* o) { return o->objectName().startsWith(QStringLiteral("qt_")); }

// A field or a result shows a value; a label the window marks as a caption
// cell shows a fixed word the sheet holds.
bool isCellWidget(const QObject* o) {
    if (o->property("captionCell").toBool()) return false;
    return o->inherits("tarvokin::ui::CellLabel") || o->inherits("tarvokin::ui::CellEdit");
}

bool inMenu(const QAction* a) {
    for (QObject* o : a->associatedObjects())
        if (qobject_cast<QMenu*>(o)) return true;
    return false;
}

QString strippedText(const QAction* a) {
    QString t = a->text();
    t.remove(QLatin1Char('&'));
    return t;
}

// The children of `parent` in the order its code built them. Qt's own list
// changes whenever a widget is raised (a tab page shown, a window brought
// forward), so widgets held by a layout come in the layout's order, which
// only the code sets; the other children follow in Qt's order.
void layoutWidgets(QLayout* layout, QObject* owner, std::vector<QObject*>& out, std::set<QObject*>& taken) {
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (QWidget* w = item->widget(); w && w->parent() == owner && taken.insert(w).second) out.push_back(w);
        else if (QLayout* inner = item->layout()) layoutWidgets(inner, owner, out, taken);
    }
}

std::vector<QObject*> orderedChildren(QObject* parent) {
    std::vector<QObject*> out;
    std::set<QObject*> taken;
    if (auto* w = qobject_cast<QWidget*>(parent); w && w->layout()) layoutWidgets(w->layout(), w, out, taken);
    for (QObject* c : parent->children())
        if (!taken.count(c)) out.push_back(c);
    return out;
}

// One text of a control: how to read it and how to set it.
struct Slot {
    QObject* owner;
    QString suffix;  // "Caption", "TabCaption_2"...
    std::function<QString()> get;
    std::function<void(const QString&)> set;
};

// The base of the name given to a control that has none.
QString autoBase(const QObject* o) {
    if (qobject_cast<const QLabel*>(o)) return QStringLiteral("Label");
    if (qobject_cast<const QCheckBox*>(o)) return QStringLiteral("Check");
    if (qobject_cast<const QRadioButton*>(o)) return QStringLiteral("Option");
    if (qobject_cast<const QAbstractButton*>(o)) return QStringLiteral("Command");
    if (qobject_cast<const QGroupBox*>(o)) return QStringLiteral("Frame");
    if (qobject_cast<const QTabWidget*>(o)) return QStringLiteral("SSTab");
    if (qobject_cast<const QComboBox*>(o)) return QStringLiteral("Combo");
    if (qobject_cast<const QTableWidget*>(o) || qobject_cast<const QTreeWidget*>(o)) return QStringLiteral("Grid");
    if (o->inherits("tarvokin::ui::ChartPanel")) return QStringLiteral("MSChart");
    if (qobject_cast<const QDockWidget*>(o)) return QStringLiteral("Dock");
    if (qobject_cast<const QMenu*>(o)) return QStringLiteral("Menu");
    if (qobject_cast<const QAction*>(o)) return QStringLiteral("Action");
    return QStringLiteral("Control");
}

// The name of a control the code left unnamed: its kind and a short digest of
// its French texts. It does not depend on when the window is first walked
// (Qt reorders children as tabs show and windows rise), and controls of one
// window with the same texts share their keys, as they share their words.
QString autoName(QObject* o) {
    QString texts;
    if (auto* l = qobject_cast<QLabel*>(o)) texts = l->text();
    else if (auto* b = qobject_cast<QAbstractButton*>(o)) texts = b->text();
    else if (auto* g = qobject_cast<QGroupBox*>(o)) texts = g->title();
    else if (auto* a = qobject_cast<QAction*>(o)) texts = a->text();
    else if (auto* m = qobject_cast<QMenu*>(o)) texts = m->title();
    else if (auto* d = qobject_cast<QDockWidget*>(o)) texts = d->windowTitle();
    else if (auto* t = qobject_cast<QTabWidget*>(o)) {
        for (int i = 0; i < t->count(); ++i) texts += t->tabText(i) + QLatin1Char('|');
    }
    if (auto* w = qobject_cast<QWidget*>(o)) texts += QLatin1Char('\n') + w->toolTip();
    else if (auto* a = qobject_cast<QAction*>(o)) texts += QLatin1Char('\n') + a->toolTip();
    uint32_t h = 2166136261u;  // FNV-1a over the UTF-8 bytes
    for (char c : texts.toUtf8()) {
        h ^= static_cast<unsigned char>(c);
        h *= 16777619u;
    }
    return autoBase(o) + QStringLiteral("%1").arg(h & 0xFFFFFu, 5, 16, QLatin1Char('0')).toUpper();
}

class Walker {
public:
    explicit Walker(QWidget* form) : form_(form) {}

    std::vector<Slot> texts() {
        std::vector<Slot> out;
        if (!form_->property("valueTitle").toBool() && hasLetter(form_->windowTitle())) {
            QWidget* f = form_;
            out.push_back({f, QStringLiteral("Caption"), [f] { return f->windowTitle(); },
                           [f](const QString& t) { f->setWindowTitle(t); }});
        }
        visit(form_, out);
        return out;
    }

    // The key prefix of a control: "<name>_" or "<name>_<index>_".
    QString prefix(QObject* o) {
        if (o->objectName().isEmpty()) o->setObjectName(autoName(o));
        const QVariant index = o->property("index");
        if (index.isValid()) return o->objectName() + QLatin1Char('_') + QString::number(index.toInt()) + QLatin1Char('_');
        return o->objectName() + QLatin1Char('_');
    }

private:
    void visit(QObject* parent, std::vector<Slot>& out) {
        for (QObject* c : orderedChildren(parent)) {
            if (c->isWidgetType() && isLanguageForm(c)) continue;
            // A control whose texts are values (names, results, a legend of
            // the series) is marked so by its window, with all it holds.
            if (c->property("noLanguage").toBool()) continue;
            // The toolkit's own parts hold the window's pages (the stack of a
            // tab control, the viewport of a scroll area) but no text of ours.
            if (!isToolkitPart(c)) textsOf(c, out);
            visit(c, out);
        }
    }

    void textsOf(QObject* o, std::vector<Slot>& out) {
        auto add = [&](const QString& suffix, std::function<QString()> get, std::function<void(const QString&)> set) {
            out.push_back({o, suffix, std::move(get), std::move(set)});
        };
        if (auto* a = qobject_cast<QAction*>(o)) {
            if (a->isSeparator() || a->menu()) return;
            // The show/hide entries of docks and toolbars follow their titles.
            if (auto* d = qobject_cast<QDockWidget*>(a->parent()); d && d->toggleViewAction() == a) return;
            if (auto* t = qobject_cast<QToolBar*>(a->parent()); t && t->toggleViewAction() == a) return;
            if (inMenu(a)) {
                if (hasLetter(a->text())) add(QStringLiteral("Caption"), [a] { return a->text(); }, [a](const QString& t) { a->setText(t); });
                if (!a->toolTip().isEmpty() && a->toolTip() != strippedText(a))
                    add(QStringLiteral("ToolTipText"), [a] { return a->toolTip(); }, [a](const QString& t) { a->setToolTip(t); });
            } else if (hasLetter(a->toolTip())) {
                // A toolbar button shows its tooltip; its text says the same.
                add(QStringLiteral("ToolTipText"), [a] { return a->toolTip(); }, [a](const QString& t) {
                    a->setText(t);
                    a->setToolTip(t);
                });
            }
            return;
        }
        auto* w = qobject_cast<QWidget*>(o);
        if (!w) return;
        if (auto* tb = qobject_cast<QToolButton*>(w); tb && tb->defaultAction()) return;
        if (auto* menu = qobject_cast<QMenu*>(w)) {
            if (hasLetter(menu->title()))
                add(QStringLiteral("Caption"), [menu] { return menu->title(); }, [menu](const QString& t) { menu->setTitle(t); });
            return;
        }
        if (auto* tabs = qobject_cast<QTabWidget*>(w)) {
            for (int n = 0; n < tabs->count(); ++n) {
                if (!hasLetter(tabs->tabText(n))) continue;
                add(QStringLiteral("TabCaption_%1").arg(n), [tabs, n] { return tabs->tabText(n); },
                    [tabs, n](const QString& t) { tabs->setTabText(n, t); });
            }
        }
        if (auto* l = qobject_cast<QLabel*>(w); l && !isCellWidget(l) && hasLetter(l->text())) {
            add(QStringLiteral("Caption"), [l] { return l->text(); }, [l](const QString& t) { l->setText(t); });
        }
        // The standard buttons of a dialog speak the toolkit's language.
        if (auto* box = qobject_cast<QDialogButtonBox*>(w->parent());
            box && box->standardButton(qobject_cast<QAbstractButton*>(w)) != QDialogButtonBox::NoButton)
            return;
        if (auto* b = qobject_cast<QAbstractButton*>(w); b && hasLetter(b->text())) {
            add(QStringLiteral("Caption"), [b] { return b->text(); }, [b](const QString& t) { b->setText(t); });
        }
        if (auto* g = qobject_cast<QGroupBox*>(w); g && hasLetter(g->title())) {
            add(QStringLiteral("Caption"), [g] { return g->title(); }, [g](const QString& t) { g->setTitle(t); });
        }
        if (auto* d = qobject_cast<QDockWidget*>(w); d && !(d->widget() && isLanguageForm(d->widget())) &&
                                                  hasLetter(d->windowTitle())) {
            add(QStringLiteral("Caption"), [d] { return d->windowTitle(); }, [d](const QString& t) { d->setWindowTitle(t); });
        }
        if (auto* combo = qobject_cast<QComboBox*>(w); combo && combo->property("wordList").toBool()) {
            for (int n = 0; n < combo->count(); ++n) {
                add(QStringLiteral("List_%1").arg(n), [combo, n] { return combo->itemText(n); },
                    [combo, n](const QString& t) { combo->setItemText(n, t); });
            }
        }
        if (auto* grid = qobject_cast<QTableWidget*>(w)) {
            for (int n = 0; n < grid->columnCount(); ++n) {
                QTableWidgetItem* item = grid->horizontalHeaderItem(n);
                if (!item || !hasLetter(item->text())) continue;
                add(QStringLiteral("Header_%1").arg(n), [grid, n] { return grid->horizontalHeaderItem(n)->text(); },
                    [grid, n](const QString& t) { grid->horizontalHeaderItem(n)->setText(t); });
            }
        }
        if (auto* tree = qobject_cast<QTreeWidget*>(w); tree && !tree->isHeaderHidden()) {
            for (int n = 0; n < tree->columnCount(); ++n) {
                if (!hasLetter(tree->headerItem()->text(n))) continue;
                add(QStringLiteral("Header_%1").arg(n), [tree, n] { return tree->headerItem()->text(n); },
                    [tree, n](const QString& t) { tree->headerItem()->setText(n, t); });
            }
        }
        if (auto* chart = qobject_cast<ChartPanel*>(w)) {
            // A chart's titles come from the calculation, in French: the panel
            // shows a translation of each French title it is given.
            const ChartData& d = chart->data();
            const std::pair<const char*, QString> titles[] = {{"Caption", QString::fromStdString(d.title)},
                                                              {"XCaption", QString::fromStdString(d.xTitle)},
                                                              {"YCaption", QString::fromStdString(d.yTitle)}};
            // All three are offered even while the chart is empty: its titles
            // come later, with its data, and must find their translation.
            const bool valueTitle = chart->property("valueTitle").toBool();
            for (const auto& [suffix, french] : titles) {
                if (valueTitle && std::string_view(suffix) == "Caption") continue;
                add(QString::fromLatin1(suffix), [french] { return french; }, {});
            }
        }
        if (hasLetter(w->toolTip())) {
            add(QStringLiteral("ToolTipText"), [w] { return w->toolTip(); }, [w](const QString& t) { w->setToolTip(t); });
        }
    }

    QWidget* form_;
};

QByteArray frenchProperty(const QString& suffix) { return "lng_fr:" + suffix.toUtf8(); }
QByteArray shownProperty(const QString& suffix) { return "lng_on:" + suffix.toUtf8(); }

// The French text of a slot: what the control showed when first seen.
QString frenchOf(const Slot& s) {
    const QVariant v = s.owner->property(frenchProperty(s.suffix));
    if (v.isValid()) return v.toString();
    const QString now = s.get();
    s.owner->setProperty(frenchProperty(s.suffix), now);
    return now;
}

QString fromFile(const std::optional<std::string>& v) {
    return QString::fromStdString(normaliseLineEnds(*v));
}

}  // namespace

bool isLanguageForm(const QObject* o) {
    static const QRegularExpression kForm(QStringLiteral("^(F_[A-Z0-9_]+|F_Main|frmTrv|FrmHlp|Gen_Couples_[0-9]+)$"));
    return o && kForm.match(o->objectName()).hasMatch();
}

std::vector<CaptionText> WindowCaptions(QWidget* form) {
    Walker walker(form);
    std::vector<CaptionText> out;
    for (const Slot& s : walker.texts()) {
        if (!s.set && !hasLetter(s.get())) continue;  // a chart's title it has not been given
        const QString prefix = s.owner == form ? QString() : walker.prefix(s.owner);
        QString shown = s.get();
        if (auto* chart = qobject_cast<ChartPanel*>(s.owner)) shown = chart->shownTitle(shown);
        const QString french = s.set ? frenchOf(s) : s.get();
        out.push_back({prefix + s.suffix, french, shown});
    }
    return out;
}

void ApplyLanguage(QWidget* form, const LanguageTable& table, const LanguageTable& french) {
    const std::string section = form->objectName().toStdString();
    Walker walker(form);
    std::map<ChartPanel*, std::map<QString, QString>> chartTitles;
    for (const Slot& s : walker.texts()) {
        const QString prefix = s.owner == form ? QString() : walker.prefix(s.owner);
        const std::string key = (prefix + s.suffix).toStdString();
        if (auto* chart = qobject_cast<ChartPanel*>(s.owner)) {
            auto& titles = chartTitles[chart];
            const auto from = french.find(section, key);
            const auto to = table.find(section, key);
            if (from && to) titles[fromFile(from)] = fromFile(to);
            continue;
        }
        const QString fr = frenchOf(s);
        const QString now = s.get();
        const QVariant last = s.owner->property(shownProperty(s.suffix));
        // A text the window's own code has changed since (a state, a value)
        // is the code's to keep.
        if (now != fr && (!last.isValid() || now != last.toString())) continue;
        const auto value = table.find(section, key);
        QString text = value ? fromFile(value) : fr;
        // A file holds no more than a value's first 127 characters: a value
        // that is the start of the built-in text stands for all of it.
        if (value && text.size() >= 127 && fr.startsWith(text)) text = fr;
        if (text != now) s.set(text);
        s.owner->setProperty(shownProperty(s.suffix), text);
    }
    for (auto& [chart, titles] : chartTitles) chart->setTitleTranslations(std::move(titles));
    // A window shown in a dock of the main window gives the dock its title.
    if (auto* dock = qobject_cast<QDockWidget*>(form->parentWidget())) dock->setWindowTitle(form->windowTitle());
}

void ApplyLanguage(QWidget* form, const Workbench& wb) {
    if (const std::string error = LanguageReadError(wb.languageFilePath); !error.empty() && wb.showMessage)
        wb.showMessage(error);
    const auto table = LanguageTable::load(wb.languageFilePath);
    const auto french = LanguageTable::load(languageFile(wb.home(), "0"));
    ApplyLanguage(form, *table, *french);
}

namespace {

class LanguageFollower : public QObject {
public:
    LanguageFollower(Workbench& wb, QObject* parent) : QObject(parent), wb_(wb) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto type = event->type();
        // Qt tells every widget when its own translations change; ours take
        // their texts from the language files, and Qt's dialogs are made
        // anew each time they open: the round of every widget (a third of a
        // switch's time) is spared.
        if (type == QEvent::LanguageChange) return true;
        if ((type == QEvent::Show || type == QEvent::WindowActivate) && watched->isWidgetType() &&
            isLanguageForm(watched)) {
            ApplyLanguage(static_cast<QWidget*>(watched), wb_);
        }
        return false;
    }

private:
    Workbench& wb_;
};

}  // namespace

void InstallLanguageFollower(Workbench& wb, QObject* owner) {
    if (!qApp) return;
    qApp->installEventFilter(new LanguageFollower(wb, owner));
    UseToolkitLanguage(wb.settings.languageCode);
}

void UseToolkitLanguage(const std::string& languageCode) {
    static QPointer<QTranslator> current;
    if (!qApp) return;
    if (current) {
        QCoreApplication::removeTranslator(current);
        delete current;
    }
    // English is the toolkit's own; a missing translation leaves it so.
    static constexpr const char* kQtNames[4] = {"fr", nullptr, "es", "it"};
    const char* suffix = kQtNames[LanguageIndex(languageCode)];
    if (!suffix) return;
    auto* t = new QTranslator(qApp);
    if (t->load(QStringLiteral("qtbase_") + QLatin1String(suffix), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(t);
        current = t;
    } else {
        delete t;
    }
}

}  // namespace tarvokin::ui
