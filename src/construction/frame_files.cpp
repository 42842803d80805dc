#include "construction/frame_files.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "construction/frame_curve.h"
#include "core/file_replace.h"
#include "core/numbers.h"
#include "core/profile_file.h"

namespace tarvokin {

namespace fs = std::filesystem;

FileDialogSpec FileDialogByType(FileKind kind) {
    switch (kind) {
        case FileKind::Project: return {".CVB", "Fichier Projets"};
        case FileKind::Airfoil: return {".DAT", "Fichier Profil"};
        case FileKind::Fuselage: return {".FUS", "Fichier Fuselage"};
        case FileKind::Cutting: return {".DPE", "Fichier Découpe"};
    }
    return {};
}

std::vector<std::pair<std::string, std::string>> GenericFileFilters() {
    return {{"*.DAT", "*.DAT"}, {"*.DXF", "*.DXF"}, {"*.PLT", "*.PLT"}, {"*.ISO", "*.ISO"}, {"All Files (*.*)", "*.*"}};
}

std::string OutlineFileName(const std::string& answer) {
    if (answer.find('.') == std::string::npos) return answer + ".DAT";
    return answer;
}

std::string FrameNumber(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.7f", v);
    std::string s = buf;
    // A locale with a decimal comma would give one: the file always has points.
    if (auto c = s.find(','); c != std::string::npos) s[c] = '.';
    if (s == "-0.0000000") s = "0.0000000";
    return s;
}

namespace {

void line(std::string& out, const FramePoint& p, double baseLine) {
    double y = baseLine - p.y;
    // The value goes on into a division in the cutting tools: a point on the
    // base line is taken one drawing pixel above it.
    if (y == 0) y = 1;
    out += FrameNumber(p.x / kFrameUnitScale);
    out += ' ';
    out += FrameNumber(y / kFrameUnitScale);
    out += '\n';
}

void contour(std::string& out, const FramePoints& right, const FramePoints& left, int n, double baseLine) {
    const int m = (n - 1) / 2;
    for (int i = m; i >= 0; --i) line(out, right[static_cast<size_t>(i)], baseLine);
    for (int i = 0; i <= m; ++i) line(out, left[static_cast<size_t>(i)], baseLine);
    for (int i = m; i <= n - 1; ++i) line(out, left[static_cast<size_t>(i)], baseLine);
    for (int i = n - 1; i >= m; --i) line(out, right[static_cast<size_t>(i)], baseLine);
}

}  // namespace

std::string FrameOutlineText(const FrameState& f) {
    const int n = f.PointCount;
    auto fits = [n](const FramePoints& c) { return n >= 1 && static_cast<int>(c.size()) >= n; };
    if (!fits(f.CurveRight) || !fits(f.CurveLeft)) return {};
    std::string out;
    contour(out, f.CurveRight, f.CurveLeft, n, f.BaseLineY);
    if (f.Doubling) {
        if (!fits(f.DoubledRight) || !fits(f.DoubledLeft)) return {};
        contour(out, f.DoubledRight, f.DoubledLeft, n, f.BaseLineY);
    }
    return out;
}

bool SaveFrameOutline(const FrameState& f, const std::string& answer, std::string& written, std::string& error) {
    written.clear();
    if (answer.empty()) return true;  // a cancelled dialog writes nothing
    const std::string name = OutlineFileName(answer);
    const std::string text = FrameOutlineText(f);
    if (text.empty()) {
        error = "Le couple n'a pas de courbe à écrire.";
        return false;
    }
    if (!replaceFile(fs::path(name), text)) {
        error = "Impossible d'écrire le fichier " + name;
        return false;
    }
    written = name;
    return true;
}

// ---- frame project --------------------------------------------------------------

namespace {

// The shortest text that reads back as the same double: a reopened frame is
// the saved one to the last bit, so its outline file is the same too.
std::string exact(double v) {
    if (v == 0) return "0";
    char buf[40];
    for (int digits = 15; digits <= 17; ++digits) {
        std::snprintf(buf, sizeof buf, "%.*g", digits, v);
        if (std::strtod(buf, nullptr) == v) break;
    }
    return buf;
}

std::string xy(const FramePoint& p) { return exact(p.x) + ";" + exact(p.y); }

bool readXY(const std::string& text, FramePoint& p) {
    const size_t semi = text.find(';');
    if (semi == std::string::npos) return false;
    double x = 0, y = 0;
    if (!tryNumber(text.substr(0, semi), x) || !tryNumber(text.substr(semi + 1), y)) return false;
    if (!std::isfinite(x) || !std::isfinite(y)) return false;
    p = {x, y, 0};
    return true;
}

}  // namespace

bool SaveFrameProject(const FrameState& f, const fs::path& file, std::string& error) {
    ProfileDocument doc;
    doc.set("Couple", "ControlCount", std::to_string(f.ControlCount));
    doc.set("Couple", "PointCount", std::to_string(f.PointCount));
    doc.set("Couple", "CurveOrder", std::to_string(f.CurveOrder));
    doc.set("Couple", "Epaisseur", exact(f.Thickness));
    doc.set("Couple", "Doublage", f.Doubling ? "1" : "0");
    doc.set("Couple", "Asservi", f.Slaved ? "1" : "0");
    doc.set("Couple", "AxeX", exact(f.AxeX));
    doc.set("Couple", "BaseLineY", exact(f.BaseLineY));
    for (size_t i = 0; i < f.ControlPoints.size(); ++i) doc.set("Poignees", std::to_string(i), xy(f.ControlPoints[i]));
    for (size_t i = 0; i < f.DoubledControl.size(); ++i)
        doc.set("PoigneesDoublage", std::to_string(i), xy(f.DoubledControl[i]));
    if (!doc.save(file)) {
        error = "Impossible d'écrire le projet " + file.string();
        return false;
    }
    return true;
}

bool LoadFrameProject(FrameState& f, const fs::path& file, std::string& warning) {
    warning.clear();
    std::error_code ec;
    if (!fs::is_regular_file(file, ec)) {
        warning = "Impossible de lire le projet " + file.string();
        return false;
    }
    const ProfileDocument doc = ProfileDocument::load(file);
    FrameState start;
    InitFrameGenerator(start);
    std::vector<std::string> missing;

    auto whole = [&](const char* key, int def, int lo, int hi) {
        double v = 0;
        if (!tryNumber(doc.get("Couple", key, ""), v) || !std::isfinite(v) || v < lo || v > hi ||
            v != std::floor(v)) {
            missing.push_back(key);
            return def;
        }
        return static_cast<int>(v);
    };
    auto number = [&](const char* key, double def) {
        double v = 0;
        if (!tryNumber(doc.get("Couple", key, ""), v) || !std::isfinite(v)) {
            missing.push_back(key);
            return def;
        }
        return v;
    };

    FrameState g;
    g.ControlCount = whole("ControlCount", start.ControlCount, 2, 64);
    g.PointCount = whole("PointCount", start.PointCount, 2, 2000);
    g.CurveOrder = whole("CurveOrder", g.ControlCount + 1, 2, g.ControlCount + 1);
    g.Thickness = number("Epaisseur", start.Thickness);
    g.Doubling = whole("Doublage", 0, 0, 1) == 1;
    g.Slaved = whole("Asservi", 1, 0, 1) == 1;
    g.AxeX = number("AxeX", start.AxeX);
    g.BaseLineY = number("BaseLineY", start.BaseLineY);

    // The handles: all of them must read, else the start frame's handles
    // stand in (a frame with holes in it is no frame).
    auto handles = [&](const char* section, FramePoints& out) {
        out.assign(static_cast<size_t>(g.ControlCount + 1), {});
        for (int i = 0; i <= g.ControlCount; ++i)
            if (!readXY(doc.get(section, std::to_string(i), ""), out[static_cast<size_t>(i)])) return false;
        return true;
    };
    bool mainOk = handles("Poignees", g.ControlPoints);
    if (!mainOk) {
        missing.push_back("[Poignees]");
        g.ControlCount = start.ControlCount;
        g.CurveOrder = std::min(g.CurveOrder, g.ControlCount + 1);
        g.ControlPoints = start.ControlPoints;
    }
    g.HandleMarks.assign(g.ControlPoints.size(), "");
    g.HandleRed.assign(g.ControlPoints.size(), false);
    if (!handles("PoigneesDoublage", g.DoubledControl)) {
        if (g.Doubling) missing.push_back("[PoigneesDoublage]");
        ApplyDoubling(g);
    }

    f.ControlCount = g.ControlCount;
    f.PointCount = g.PointCount;
    f.CurveOrder = g.CurveOrder;
    f.Thickness = g.Thickness;
    f.Doubling = g.Doubling;
    f.Slaved = g.Slaved;
    f.AxeX = g.AxeX;
    f.BaseLineY = g.BaseLineY;
    f.ControlPoints = std::move(g.ControlPoints);
    f.DoubledControl = std::move(g.DoubledControl);
    f.HandleMarks = std::move(g.HandleMarks);
    f.HandleRed = std::move(g.HandleRed);
    f.ActiveHandle = -1;
    f.dragging = false;
    RecomputeFrameCurves(f);

    if (!missing.empty()) {
        std::string list;
        for (const std::string& m : missing) list += (list.empty() ? "" : ", ") + m;
        warning = file.filename().string() + " : valeurs de départ prises pour " + list;
    }
    return true;
}

}  // namespace tarvokin
