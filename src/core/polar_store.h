// The polars of the three airfoil slots as the run keeps them: six records a
// slot with the figures of merit read on the way, and the last table read.
// The reader and the drag lookup work on it from the airfoils folder.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvokin {

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

// Report of one record for the command-line program: the figures as
// "Name=value" lines, then CSV rows 0..max(LastRow, LastExtRow), with numbers
// in %.17g so that they read back exactly.
void printPolarReport(const PolarRecord& r, std::ostream& out);

}  // namespace tarvokin
