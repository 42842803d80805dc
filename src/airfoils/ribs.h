// The ribs between a root and a tip airfoil of a tapered panel: outlines
// read by the catalogue's rules, the span positions, the blended outlines in
// mm, and one cutting file per rib.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/catalogue.h"
#include "core/generator_state.h"

namespace tarvokin {

namespace ribs {
// Option1: how the ribs line up along the chord.
enum Align : int {
    LeadingEdge = 0,   // "Bord d'attaque": the leading edges on one straight line
    TrailingEdge = 1,  // "Bord de fuite": the trailing edges on one line
    Trapeze = 2,       // "Trapeze": the mid-chords on one line, both edges swept alike
    QuarterChord = 3,  // "25 % de la corde": the quarter-chord points on one line
};
constexpr int kAlignments = 4;
constexpr int kMaxRibs = 500;
}  // namespace ribs

const char* RibAlignCaption(int align);

struct RibRequest {
    OutlinePoints root, tip;  // unit chord, file order
    double rootChord = 200, tipChord = 150, span = 500;  // mm
    int count = 5;
    double spacing = 0;  // mm between ribs from the root; 0 for `count` ribs evenly spread
    int align = ribs::LeadingEdge;
};

// The outline of an airfoil of the catalogue: the row's path when that file
// exists, else DATA/<name>.DAT; read by the outline line rules and scaled to a
// chord of 1 at its largest x. False (points untouched) when no file reads.
bool ReadRibOutline(const std::filesystem::path& home, const ProfilCatalogue& catalogue, std::string_view name,
                    OutlinePoints& points);

// Span positions (mm) of the ribs from the root: with a spacing, every
// `spacing` mm as far as the span reaches; else `count` positions evenly
// from root to tip (a single rib is the root).
std::vector<double> RibPositions(double span, int count, double spacing);

// The ribs. The outline with fewer points is resampled by the tension spline
// to the other's count; an end without points takes the other end's outline.
// False with one line for the user on bad input.
bool BuildRibs(const RibRequest& r, std::vector<RibOutline>& out, std::string& error);

// "x y" a line, 7 decimals, in mm.
std::string RibFileText(const RibOutline& rib);

// Writes <base>_<n>.DAT for each rib, n from 1, each file replaced whole.
// Returns the closing message, or "" with `error` set when a file could not
// be written (the files before it are complete, none is half written).
std::string WriteRibFiles(const std::filesystem::path& base, const std::vector<RibOutline>& ribs, std::string& error);

}  // namespace tarvokin
