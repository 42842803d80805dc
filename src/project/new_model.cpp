#include "project/new_model.h"

#include "core/cells.h"
#include "core/numbers.h"
#include "core/sheet.h"

namespace tarvokin {

namespace {

// A wizard figure as the design fields hold figures.
std::string figure(const Sheet& s, Cell c) { return s.text(c); }

}  // namespace

std::string WizardModelName(const std::string& text) {
    const std::string before = text.substr(0, text.find('.'));
    std::string name;
    for (char c : before)
        if (c != ' ') name += c;
    return text.empty() ? std::string("Test") : name;
}

void FillNewModelFields(Sheet& s) {
    using namespace F_WIZZARD;
    s.set(F_GEO_SF_REGLAGES::H30, figure(s, Text13));
    s.set(F_GEO_SF_REGLAGES::I30, figure(s, Text14));
    s.set(F_GEO_SF::b5, figure(s, Text15));
    s.set(F_GEO_SF::b6, figure(s, Text16));
    s.set(F_GEO_SF::b8, figure(s, Text17));
    s.set(F_GEO_SF::B10, figure(s, Text18));
    s.set(F_GEO_SF::b7, figure(s, Text19));
    s.set(F_GEO_FUS::b25, figure(s, Text20));
    s.set(F_GEO_SF::c7, "0");
    // The wing sits on top of the fuselage, in the middle, or under it.
    const double height = s.val(Text11);
    const int position = s.listIndex(Combo1);
    s.set(F_GEO_FUS::Text5, position == 0 ? plain(-height / 2) : position == 1 ? std::string("0") : plain(height / 2));
    s.set(F_GEO_SF::T_Ail_PosL, "0");
    s.set(F_GEO_SF::T_Ail_PosR, s.text(F_GEO_SF::b7));
    s.set(F_GEO_SF::T_Flap_PosL, "0");
    s.set(F_GEO_SF::T_Flap_PosR, "0");
    s.set(F_GEO_STAB::b16, figure(s, Text2));
    s.set(F_GEO_STAB::b17, figure(s, Text3));
    s.set(F_GEO_STAB::b19, figure(s, Text4));
    const int opening = s.listIndex(b21) < 0 ? 0 : s.listIndex(b21);
    s.setListIndex(F_GEO_STAB::b21, opening);
    s.set(F_GEO_STAB::Check1, s.text(F_GEO_STAB::b21) != "180" ? "1" : "0");
    s.set(F_GEO_STAB::b18, figure(s, Text5));
    s.set(F_GEO_STAB::b20, figure(s, Text6));
    s.set(F_GEO_STAB::c18, "0");
    s.set(F_GEO_STAB::Text12, figure(s, Text7));
    const int stabPlace = s.listIndex(Combo2);
    s.set(F_GEO_STAB::Text4, stabPlace == 1 ? "100" : stabPlace == 2 ? "50" : "0");
    s.set(F_GEO_STAB::T_Prof_PosL, "0");
    s.set(F_GEO_STAB::T_Prof_PosR, s.text(F_GEO_STAB::b18));
    s.set(F_GEO_STAB::Text14, plain(s.val(Text20) + s.val(Text6)));
    s.set(F_GEO_STAB::Text11, figure(s, Text8));
    s.set(F_GEO_STAB::Text10, figure(s, Text9));
    s.set(F_GEO_FUS::b24, figure(s, Text10));
    s.set(F_GEO_FUS::D25, figure(s, Text11));
    s.set(F_GEO_FUS::D24, figure(s, Text12));
    s.set(F_PROFILS::CB_1[0], s.text(CB_1));
}

double NewModelStation(int marker, double nose, double rootChord, double length) {
    const double d = (length - nose - rootChord) / 4;
    switch (marker) {
        case 0: return nose / 6;  // a third of marker 1's distance
        case 1: return nose / 2;
        case 2: return nose;
        case 3: return nose + rootChord;
        case 4: case 5: case 6: return nose + rootChord + (marker - 3) * d;
        default: return length;
    }
}

Plan WizardPreview(const Sheet& s) {
    using namespace F_WIZZARD;
    Plan plan;
    plan.title = "Wizzard";
    const double nose = s.val(Text20), chord = s.val(Text15), tip = s.val(Text16), sweep = s.val(Text17);
    const double span = s.val(Text19), w = s.val(Text12) / 2, tail = s.val(Text10) - nose;
    const Rgb ink{0, 0, 0}, wing{40, 90, 200}, stab{30, 140, 60}, body{120, 120, 120};
    auto mirrored = [&](const char* kind, std::vector<PlanPoint> half, Rgb colour) {
        // One side as given, the other mirrored back along it: one closed outline.
        std::vector<PlanPoint> all = half;
        for (auto it = half.rbegin(); it != half.rend(); ++it) all.push_back({-it->x, it->y});
        plan.polylines.push_back({PlanLayer::Outline, kind, std::move(all), true, colour, false});
    };
    // Fuselage: the nose by fixed ratios, then a taper to the tail.
    std::vector<PlanPoint> f = {{0, -nose},        {0.4 * w, -0.9 * nose}, {0.55 * w, -0.8 * nose},
                                {0.8 * w, -0.6 * nose}, {0.97 * w, -0.3 * nose}, {w, 0}, {w, chord / 2}};
    if (tail > chord / 2) {
        for (int k = 1; k <= 5; ++k) {
            const double t = k / 5.0;
            const double y = chord / 2 + t * (0.98 * tail - chord / 2);
            f.push_back({w * (1 - 0.75 * t), y});
        }
    }
    f.push_back({0, tail});
    mirrored("Fuselage", f, body);
    mirrored("Aile", {{0, 0}, {span, sweep}, {span, sweep + tip}, {0, chord}}, wing);
    const double lever = s.val(Text6), sRoot = s.val(Text2), sTip = s.val(Text3), sSweep = s.val(Text4);
    const double sSpan = s.val(Text5);
    mirrored("Stab", {{0, lever}, {sSpan, lever + sSweep}, {sSpan, lever + sSweep + sTip}, {0, lever + sRoot}}, stab);
    plan.segments.push_back({PlanLayer::Mark, "Derive", {0, lever}, {0, lever + s.val(Text7)}, ink, false});
    return plan;
}

void PlaceNewModelFrames(Sheet& s) {
    using namespace F_WIZZARD;
    const double nose = s.val(Text20), chord = s.val(Text15), length = s.val(Text10);
    const double height = s.val(Text11), half = s.val(Text12) / 2;
    for (int n = 0; n < 8; ++n) {
        s.set(F_GEO_FUS::Couple_X1[n], plain(NewModelStation(n, nose, chord, length)));
        // The last marker closes the outline on a point at mid height.
        const bool last = n == 7;
        s.set(F_GEO_FUS::Couple_Y1[n], plain(last ? height / 2 : height));
        s.set(F_GEO_FUS::Couple_Y2[n], plain(last ? height / 2 : 0));
        s.set(F_GEO_FUS::CoupleV_Y1[n], plain(last ? 0 : half));
        s.set(F_GEO_FUS::CoupleV_Y2[n], plain(last ? 0 : -half));
    }
    // Rib rows of the frames: a box fuselage has its four sides, a rounded
    // one only the top and the bottom.
    const bool box = s.listIndex(Combo3) <= 0;
    const int row[5] = {1267, 30, 30, box ? 28 : 0, box ? 30 : 0};
    for (int n = 0; n < 8; ++n)
        for (int j = 0; j < 5; ++j) s.set(F_GEO_FUS::Ribs[5 * n + j], std::to_string(row[j]));
}

}  // namespace tarvokin
