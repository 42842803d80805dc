#include "core/ui/cell_widgets.h"

#include <algorithm>
#include <cctype>

#include "core/list_items.h"

#include <QKeyEvent>

#include "entry/entry_path.h"
#include "entry/field_rules.h"
#include "entry/entry_keys.h"
#include "core/ui/sheet_bridge.h"
#include "core/workbench.h"

namespace tarvokin::ui {

QString qs(const std::string& s) { return QString::fromStdString(s); }
std::string ss(const QString& s) { return s.toStdString(); }

namespace {

void nameAfter(QWidget* w, Cell c) {
    const CellDef& d = cellTable()[c.id];
    w->setObjectName(QString::fromLatin1(d.name));
    if (d.index >= 0) w->setProperty("index", d.index);
}

// The key code the entry check sees for a typed character, 0 for keys that
// edit or move rather than type (they always pass).
int typedKey(const QKeyEvent* e) {
    if (e->key() == Qt::Key_Backspace) return 8;
    const QString t = e->text();
    if (t.size() != 1 || !t.at(0).isPrint()) return 0;
    if (e->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return 0;
    return t.at(0).unicode();
}

}  // namespace

CellEdit::CellEdit(SheetBridge& bridge, Cell cell, QWidget* parent) : QLineEdit(parent), bridge_(bridge), cell_(cell) {
    nameAfter(this, cell);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setMinimumWidth(60);
    pull();
    bridge_.watch(cell_, this, [this] { pull(); });
    connect(this, &QLineEdit::textEdited, this, [this](const QString& t) {
        Workbench& wb = bridge_.workbench();
        bridge_.enter([&] { Type(wb, cell_, ss(t)); });
    });
    // Leaving the field completes what was typed into it as one entry.
    connect(this, &QLineEdit::editingFinished, this, [this] { EndEntry(bridge_.workbench()); });
}

void CellEdit::pull() {
    const QString t = qs(bridge_.workbench().sheet.text(cell_));
    if (t != text()) {
        const int pos = cursorPosition();
        setText(t);
        if (hasFocus()) setCursorPosition(std::min(pos, static_cast<int>(t.size())));
    }
}

namespace {

// The program's undo (-1) or redo (1) asked by a key, 0 for any other key.
int historyKey(const QKeyEvent* k) {
    if (k->matches(QKeySequence::Undo)) return -1;
    const bool ctrlY = k->key() == Qt::Key_Y && (k->modifiers() & Qt::ControlModifier);
    return k->matches(QKeySequence::Redo) || ctrlY ? 1 : 0;
}

}  // namespace

bool CellEdit::event(QEvent* e) {
    if (e->type() == QEvent::ShortcutOverride && historyKey(static_cast<QKeyEvent*>(e)) != 0) {
        e->ignore();
        return false;
    }
    return QLineEdit::event(e);
}

void CellEdit::keyPressEvent(QKeyEvent* e) {
    Workbench& wb = bridge_.workbench();
    // Without the window's shortcut (no active window), the keys still walk
    // the program's history and never the field's own.
    if (const int h = historyKey(e)) {
        bridge_.enter([&] { Click(wb, "F_Main", h < 0 ? "IM_UNDO" : "IM_REDO"); });
        return;
    }
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        bridge_.enter([&] { PressEnter(wb, cell_); });
        focusNextChild();
        return;
    }
    const EntryCheck check = entryCheckOf(cell_);
    const int key = typedKey(e);
    if (check == EntryCheck::None || key == 0) {
        QLineEdit::keyPressEvent(e);
        return;
    }
    const std::string current = ss(text());
    const int selStart = hasSelectedText() ? selectionStart() : cursorPosition();
    const int selLength = hasSelectedText() ? static_cast<int>(selectedText().size()) : 0;
    int accepted = 0;
    switch (check) {
        case EntryCheck::Decimal:
        case EntryCheck::DecimalSigned:
            accepted = CheckDecimalKey(key, current, selStart, selLength, selStart,
                                       check == EntryCheck::DecimalSigned);
            break;
        case EntryCheck::Integer:
        case EntryCheck::IntegerSigned:
            accepted = CheckIntegerKey(key, check == EntryCheck::IntegerSigned);
            break;
        case EntryCheck::None: break;
    }
    if (accepted == 0) return;  // refused keys are dropped without a word
    if (accepted == key) {
        QLineEdit::keyPressEvent(e);
        return;
    }
    // The decimal key typed as "," enters the run's separator ".".
    QKeyEvent replaced(e->type(), e->key(), e->modifiers(), QString(QChar(accepted)));
    QLineEdit::keyPressEvent(&replaced);
}

CellLabel::CellLabel(SheetBridge& bridge, Cell cell, QWidget* parent) : QLabel(parent), bridge_(bridge), cell_(cell) {
    nameAfter(this, cell);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto pull = [this] { setText(qs(bridge_.workbench().sheet.text(cell_))); };
    pull();
    bridge_.watch(cell_, this, pull);
}

CellCheck::CellCheck(SheetBridge& bridge, Cell cell, const QString& caption, QWidget* parent)
    : QCheckBox(caption, parent), bridge_(bridge), cell_(cell) {
    nameAfter(this, cell);
    auto pull = [this] {
        QSignalBlocker b(this);
        setChecked(bridge_.workbench().sheet.val(cell_) != 0.0);
    };
    pull();
    bridge_.watch(cell_, this, pull);
    connect(this, &QCheckBox::clicked, this, [this](bool on) {
        Workbench& wb = bridge_.workbench();
        bridge_.enter([&] { Tick(wb, cell_, on); });
    });
}

CellCombo::CellCombo(SheetBridge& bridge, Cell cell, QWidget* parent) : QComboBox(parent), bridge_(bridge), cell_(cell) {
    nameAfter(this, cell);
    // A fixed list of words, of which the project keeps the position: its
    // entries may be shown in the modeller's language.
    for (const FixedList& list : fixedLists()) {
        if (list.cell != cell) continue;
        for (const std::string& item : list.items)
            if (std::any_of(item.begin(), item.end(), [](unsigned char c) { return std::isalpha(c) || c >= 0x80; }))
                setProperty("wordList", true);
    }
    pullItems();
    bridge_.watch(cell_, this, [this] {
        if (count() != static_cast<int>(bridge_.workbench().sheet.items(cell_).size())) pullItems();
        pullIndex();
    });
    connect(this, &QComboBox::activated, this, [this](int index) {
        Workbench& wb = bridge_.workbench();
        bridge_.enter([&] { Choose(wb, cell_, index); });
    });
}

void CellCombo::pullItems() {
    QSignalBlocker b(this);
    clear();
    for (const std::string& s : bridge_.workbench().sheet.items(cell_)) addItem(qs(s));
    pullIndex();
}

void CellCombo::pullIndex() {
    QSignalBlocker b(this);
    setCurrentIndex(bridge_.workbench().sheet.listIndex(cell_));
}

}  // namespace tarvokin::ui
