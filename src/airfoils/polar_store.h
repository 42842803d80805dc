// The polars of the three airfoil slots: the reader of XFOIL's polar save file
// (.POL), the figures of merit it derives on the way, the extension of a polar
// past its maximum lift, and Get_Cx, the drag lookup by slot, Reynolds number
// and lift coefficient that every performance curve goes through.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvokin {

class Workbench;

constexpr int kPolarSlots = 3;
constexpr int kReynoldsCount = 6;
constexpr int kPolarRows = 146;  // rows 0..145 of a record
constexpr int kPolarTableColumns = 24;
constexpr int kPolarTableStartRows = 26;

// The standard Reynolds numbers, one record of each per slot.
constexpr std::array<int32_t, kReynoldsCount> kStandardReynolds = {25000, 50000, 100000, 220000, 750000, 1500000};

// One row of a polar: as read (Alpha in degrees, Cz, Cx, Cm), and the extended
// columns (CzExt, CxExt) that continue the polar past its maximum lift.
struct PolarPoint {
    double Alpha = 0.0;
    double Cz = 0.0;
    double Cx = 0.0;
    double CzExt = 0.0;
    double CxExt = 0.0;
    double Cm = 0.0;
};

struct PolarRecord {
    int32_t Re = 0;            // the record's standard Reynolds number
    double Cxmin = 0.0;        // smallest Cd
    double Cz_Decroch = 0.0;   // stall Cz (0.2 below the last Cz that held up)
    double Czopt = 0.0;        // Cz of the row of Cxmin
    double k = 0.0;            // parabola of the model Cx = Cxmin + k (Cz - Czopt)^2
    double Alpha0 = 0.0;       // incidence of the row with the smallest non-negative Cz
    double Cm0 = 0.0;          // most negative Cm
    std::array<PolarPoint, kPolarRows> Points{};
    int16_t LastRow = 0;       // last row read from the file
    int16_t LastExtRow = 0;    // last valid row of the extended columns
};

// The last polar read for a slot, whatever its Reynolds number, as rows of 24
// numbers of which 0 = Cz, 1 = alpha, 2 = Cz, 3 = Cm, 4 = Cd, 11 = Cd are used.
using PolarTableRow = std::array<double, kPolarTableColumns>;
using PolarTable = std::vector<PolarTableRow>;

// Figures of the polar last read into a slot, as the airfoil window shows them
// in T_CXMin, T_CzOpt, T_k and T_Cz_Decroch. The reader sets them as it goes,
// so a read that stops halfway leaves what it had reached.
struct PolarFigures {
    double T_CXMin = 0.0;
    double T_CzOpt = 0.0;
    double T_k = 0.0;
    double T_Cz_Decroch = 0.0;
};

// The store of a run: 3 slots by 6 standard Reynolds numbers, zero except for
// each record's Re; each slot's PolarTable starts with 26 empty rows.
struct PolarStore {
    PolarStore();

    std::array<std::array<PolarRecord, kReynoldsCount>, kPolarSlots> Polars{};
    std::array<PolarTable, kPolarSlots> PolarTables;
    std::array<PolarFigures, kPolarSlots> figures{};
};

// Index of a standard Reynolds number by exact equality; nothing for any other value.
std::optional<int> ReynoldsIndex(double Re);

// The Reynolds index a polar file's name tells: the text behind the last "_"
// of the file's own name up to ".POL" (any case), so "MY_FOIL_220000.pol" is
// 3. A name that tells none gives 0.
int ReynoldsIndexOfFile(const std::filesystem::path& file);

// Reads a .POL file into record reIndex of the slot (from the file's name when
// not given). True after a complete read; false when the slot or the index is
// bad (nothing touched), when the file can't be opened or has no "------" line
// (the record is left cleared), or when a number overflows (the record keeps
// what was read). Never throws on the file's content.
bool Read_Polar(PolarStore& store, const std::filesystem::path& file, int slot,
                std::optional<int> reIndex = std::nullopt);

// True when the polar file holds at least one row behind its header: XFOIL
// writes the header alone when no angle converged.
bool PolarHasRows(const std::filesystem::path& file);

// Cx of one slot at Reynolds number Re and lift coefficient Cz, rounded to 7
// decimals. Works on the fixed store only and allocates nothing. A bad slot
// gives 0. The Workbench form also shows "Probleme Noprofil >2" for a slot
// above 2, as the lookup always has.
double Get_Cx(const PolarStore& store, int slot, double Re, double Cz);
double Get_Cx(const Workbench& wb, int slot, double Re, double Cz);

// Report of one record for the command-line program: the figures as
// "Name=value" lines, then CSV rows 0..max(LastRow, LastExtRow), with numbers
// in %.17g so that they read back exactly.
void printPolarReport(const PolarRecord& r, std::ostream& out);

}  // namespace tarvokin
