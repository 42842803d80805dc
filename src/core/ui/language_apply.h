// The windows' captions in the modeller's language. Every window is built
// with its French texts; a language file replaces them key by key, and a key
// that the file lacks leaves (or puts back) the French text.
//
// Keys, in the section named after the window:
//   Caption                      the window's title
//   <Control>_Caption            caption of a label, button, frame, menu entry,
//                                menu, dock; the title of a chart
//   <Control>_ToolTipText        tooltip
//   <Control>_TabCaption_<n>     tab n of a tabbed control
//   <Control>_List_<n>           entry n of a list whose entries are words
//   <Control>_Header_<n>         column head n of a grid
//   <Control>_XCaption, _YCaption the axis titles of a chart
// and, for an element of a control group, <Control>_<Index>_ before the suffix.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

class QObject;
class QWidget;

namespace tarvokin {
class LanguageTable;
class Workbench;
}  // namespace tarvokin

namespace tarvokin::ui {

// A control that is a window of its own in the language files (F_GEO_SF,
// frmTrv...): the walk of its parent stops there.
bool isLanguageForm(const QObject* o);

// One translatable text of a window: its key, the French text the window was
// built with, and what it shows now.
struct CaptionText {
    QString key;
    QString french;
    QString shown;
};

// Every translatable text of `form` in the creation order of its controls.
// Controls without a name that show a caption are named on the way, by kind
// and a digest of their French texts (LabelA03F2, Frame1B7C0...), so that the
// language files can address them.
std::vector<CaptionText> WindowCaptions(QWidget* form);

// Puts the texts of `table` on `form`; French where a key is absent. `french`
// is the French file, whose chart titles tell which calculation title a
// translated chart title stands for.
void ApplyLanguage(QWidget* form, const LanguageTable& table, const LanguageTable& french);
// The same with the run's language file.
void ApplyLanguage(QWidget* form, const Workbench& wb);

// The toolkit's own words (Yes, No, Cancel, the file dialogs) in the language
// of `languageCode`, from Qt's translations when they are installed.
void UseToolkitLanguage(const std::string& languageCode);

// Applies the run's language to each window as it shows or activates, and
// again to the main and design windows when the modeller changes language.
// The follower lives as long as `owner` (the main window).
void InstallLanguageFollower(Workbench& wb, QObject* owner);

}  // namespace tarvokin::ui
