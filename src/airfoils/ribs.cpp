#include "airfoils/ribs.h"

#include <cmath>
#include <cstdio>

#include "airfoils/outline.h"
#include "core/file_replace.h"

namespace tarvokin {

namespace fs = std::filesystem;

const char* RibAlignCaption(int align) {
    static const char* captions[ribs::kAlignments] = {"Bord d'attaque", "Bord de fuite", "Trapeze",
                                                       "25 % de la corde"};
    return align >= 0 && align < ribs::kAlignments ? captions[align] : "";
}

bool ReadRibOutline(const fs::path& home, const ProfilCatalogue& catalogue, std::string_view name,
                    OutlinePoints& points) {
    std::error_code ec;
    fs::path file;
    const size_t row = catalogue.Find_Profil(name);
    if (row != kNotFound) {
        const fs::path p = outlinePath(home, catalogue.rows[row].Path);
        if (fs::is_regular_file(p, ec)) file = p;
    }
    if (file.empty()) file = outlinePath(home, std::string(name) + ".DAT");
    OutlinePoints read;
    OutlineExtremes ext;
    if (!readOutlineFile(file, read, ext) || read.size() < 3) return false;
    double largest = 0;
    for (const OutlinePoint& p : read) largest = std::max(largest, p.x);
    if (!(largest > 0)) return false;
    for (OutlinePoint& p : read) {
        p.x /= largest;
        p.y /= largest;
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return false;
    }
    points = std::move(read);
    return true;
}

std::vector<double> RibPositions(double span, int count, double spacing) {
    std::vector<double> z;
    if (spacing > 0) {
        // Whole steps from the root; a rib that would fall a hair beyond
        // the tip through rounding still counts as the tip rib.
        const int n = static_cast<int>(std::floor(span / spacing + 1e-9)) + 1;
        for (int k = 0; k < n && k < ribs::kMaxRibs; ++k) z.push_back(k * spacing);
        return z;
    }
    for (int n = 1; n <= count; ++n) z.push_back(count == 1 ? 0.0 : span * (n - 1) / (count - 1));
    return z;
}

bool BuildRibs(const RibRequest& r, std::vector<RibOutline>& out, std::string& error) {
    if (r.root.empty() && r.tip.empty()) {
        error = "Aucun profil d'emplanture ni de saumon";
        return false;
    }
    if (!(r.rootChord > 0) || !(r.tipChord > 0)) {
        error = "Les cordes doivent être positives";
        return false;
    }
    if (!(r.span >= 0) || !std::isfinite(r.span)) {
        error = "L'envergure doit être positive";
        return false;
    }
    if (r.spacing < 0 || !std::isfinite(r.spacing)) {
        error = "L'espacement doit être positif";
        return false;
    }
    if (r.spacing == 0 && (r.count < 1 || r.count > ribs::kMaxRibs)) {
        error = "Nombre de nervures entre 1 et " + std::to_string(ribs::kMaxRibs);
        return false;
    }
    if (r.spacing > 0 && r.span / r.spacing >= ribs::kMaxRibs) {
        error = "Espacement trop petit : plus de " + std::to_string(ribs::kMaxRibs) + " nervures";
        return false;
    }
    OutlinePoints root = r.root.empty() ? r.tip : r.root;
    OutlinePoints tip = r.tip.empty() ? r.root : r.tip;
    // Point i of the root and of the tip must be the same place of the
    // section: the shorter outline is resampled to the longer one's count.
    if (root.size() < tip.size()) root = TensionSpline(root, static_cast<int>(tip.size()) - 1);
    else if (tip.size() < root.size()) tip = TensionSpline(tip, static_cast<int>(root.size()) - 1);
    if (root.size() != tip.size()) {
        error = "Les profils n'ont pas pu être mis au même nombre de points";
        return false;
    }

    std::vector<RibOutline> ribs;
    for (double z : RibPositions(r.span, r.count, r.spacing)) {
        const double f = r.span > 0 ? z / r.span : 0.0;
        RibOutline rib;
        rib.position = z;
        rib.chord = r.rootChord + f * (r.tipChord - r.rootChord);
        const double shrink = r.rootChord - rib.chord;
        switch (r.align) {
            case ribs::TrailingEdge: rib.offset = shrink; break;
            case ribs::Trapeze: rib.offset = shrink / 2; break;
            case ribs::QuarterChord: rib.offset = shrink / 4; break;
            default: rib.offset = 0; break;
        }
        rib.points.resize(root.size());
        for (size_t i = 0; i < root.size(); ++i) {
            const double x = root[i].x * (1 - f) + tip[i].x * f;
            const double y = root[i].y * (1 - f) + tip[i].y * f;
            rib.points[i] = {rib.offset + x * rib.chord, y * rib.chord};
        }
        ribs.push_back(std::move(rib));
    }
    out = std::move(ribs);
    return true;
}

std::string RibFileText(const RibOutline& rib) {
    std::string s;
    s.reserve(rib.points.size() * 28);
    char b[80];
    for (const OutlinePoint& p : rib.points) {
        std::snprintf(b, sizeof b, "%.7f %.7f\n", p.x == 0.0 ? 0.0 : p.x, p.y == 0.0 ? 0.0 : p.y);
        s += b;
    }
    return s;
}

std::string WriteRibFiles(const fs::path& base, const std::vector<RibOutline>& ribs, std::string& error) {
    if (ribs.empty()) {
        error = "Aucune nervure à enregistrer";
        return "";
    }
    fs::path b = base;
    if (b.has_extension()) b.replace_extension();
    const std::string stem = b.filename().string();
    if (stem.empty()) {
        error = "Nom de fichier vide";
        return "";
    }
    for (size_t n = 0; n < ribs.size(); ++n) {
        const fs::path file = b.parent_path() / (stem + "_" + std::to_string(n + 1) + ".DAT");
        if (!replaceFile(file, RibFileText(ribs[n]))) {
            error = "Impossible d'écrire " + file.string();
            return "";
        }
    }
    return "Les fichiers " + stem + "_xx" + ".DAT" + " ont été générés";
}

}  // namespace tarvokin
