// The airfoil database: the tree of every airfoil and every polar file on
// disk, the simple reading of one polar for a look at it, and the deletions.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/airfoil_windows_state.h"

namespace tarvokin {

class ProfilCatalogue;
class Workbench;

// Level one: the airfoils of the catalogue in its order, then the airfoils
// that have polar files but no catalogue row, in upper-case order. Level two:
// the .POL files (any letter case) of `polarFolder` whose name, cut at its
// last "_", gives the airfoil's name (in any case; a generic row's polars
// bear its outline file's name) and the Reynolds number; a name without "_"
// is all airfoil. Polars by increasing Reynolds number.
std::vector<DatabaseAirfoil> scanPolarFolder(const std::filesystem::path& polarFolder, const ProfilCatalogue& catalogue);

// Rebuilds wb.database.tree from the program's POLAIRES folder.
void RefreshDatabaseTree(Workbench& wb);

// The simple reader: the header up to the "------" line, then per row alpha
// and Cl into one curve and Cd and Cl into the other; "NaN" ends the rows, a
// line that is not a row is passed. Nothing goes into the polar store.
struct DatabasePolarRead {
    bool opened = false;
    std::string header;
    std::vector<ChartPoint> clAlpha, clCd;
};
DatabasePolarRead readDatabasePolar(const std::filesystem::path& file);

// The polar files of an airfoil (those the tree shows under it).
std::vector<std::filesystem::path> polarFilesOf(const Workbench& wb, const std::string& airfoil);

// "Supprimer la(les) Polaire(s)": one file, or every polar of the airfoil
// when `polarFile` is empty. A file already gone is no error. Returns how
// many files were removed.
int DeletePolars(Workbench& wb, const std::string& airfoil, const std::string& polarFile);

// "Supprimer le Profil": the outline file, every polar, the catalogue row and
// GENERIC.CSV rewritten. False with a reason for an airfoil that can't go
// (not in the catalogue, or one of the generic airfoils the program falls
// back on); the lists that showed it move to their first row.
bool DeleteAirfoil(Workbench& wb, const std::string& airfoil, std::string& reason);

// Enters an outline file in the catalogue as Add_Profil does, leaving the
// three airfoil slots on their airfoils: the database adds airfoils to the
// catalogue, not to the design.
void AddToCatalogue(Workbench& wb, const std::string& file);

}  // namespace tarvokin
