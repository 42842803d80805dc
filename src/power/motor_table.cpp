#include "power/motor_table.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <set>

#include "power/calc_mot.h"
#include "core/file_spelling.h"
#include "core/numbers.h"
#include "core/text_case.h"
#include "core/workbench.h"

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

// The columns of a line: the first field, then at most six more, each behind
// its ";"; a line with fewer separators ends with the text behind its last one.
std::vector<std::string> columns(std::string_view line) {
    std::vector<std::string> out;
    size_t start = 0;
    while (out.size() < 7) {
        const size_t semi = line.find(';', start);
        out.push_back(trim(line.substr(start, semi == std::string_view::npos ? std::string_view::npos : semi - start)));
        if (semi == std::string_view::npos) break;
        start = semi + 1;
    }
    return out;
}

double numberOf(const std::vector<std::string>& cols, size_t i) {
    if (i >= cols.size()) return 0;
    const double v = leadingNumber(cols[i]);
    return std::isfinite(v) ? v : 0;
}

std::string textOf(const std::vector<std::string>& cols, size_t i) { return i < cols.size() ? cols[i] : ""; }

bool readCell(const Sheet& s, Cell c, double& out) { return tryNumber(s.text(c), out) && std::isfinite(out); }

}  // namespace

fs::path motorFilePath(const Workbench& wb) { return existingSpelling(wb.home() / "DATA" / "MOTEURS.CSV"); }

std::vector<MotorRecord> ReadMotors(const fs::path& file) {
    std::vector<MotorRecord> motors;
    std::ifstream in(file, std::ios::binary);
    if (!in) return motors;
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // The catalogue is kept in the machine's 8-bit code page; a file saved
    // as UTF-8 by a text editor is read as it is.
    const std::string text = looksLikeUtf8(bytes) ? bytes : latin1ToUtf8(bytes);
    size_t start = 0;
    bool header = true;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string_view line(text.data() + start, end - start);
        start = end + 1;
        if (header) {
            header = false;
            continue;
        }
        if (line.find('\0') != std::string_view::npos) continue;
        const std::vector<std::string> cols = columns(line);
        MotorRecord m;
        m.Marque = textOf(cols, 0);
        m.Modele = textOf(cols, 1);
        if (m.Marque.empty() || m.Modele.empty()) continue;
        m.Type = textOf(cols, 2);
        m.Kv = numberOf(cols, 3);
        m.Io = numberOf(cols, 4);
        m.Ra = numberOf(cols, 5);
        m.Masse = numberOf(cols, 6);
        motors.push_back(std::move(m));
    }
    return motors;
}

std::string motorKey(std::string_view marque, std::string_view modele) {
    std::string k(marque);
    k += '@';
    k += modele;
    return k;
}

std::vector<MotorBrand> Get_Marque_Motor(const Workbench& wb) {
    std::vector<MotorBrand> tree;
    std::set<std::string> keys;
    for (const MotorRecord& m : ReadMotors(motorFilePath(wb))) {
        if (!keys.insert(motorKey(m.Marque, m.Modele)).second) continue;
        auto it = tree.begin();
        while (it != tree.end() && it->Marque != m.Marque) ++it;
        if (it == tree.end()) {
            tree.push_back({m.Marque, {}});
            it = std::prev(tree.end());
        }
        it->Modeles.push_back(m.Modele);
    }
    return tree;
}

std::optional<MotorRecord> Charge_Moteur(const Workbench& wb, std::string_view marque, std::string_view modele) {
    for (MotorRecord& m : ReadMotors(motorFilePath(wb))) {
        if (m.Marque == marque && m.Modele == modele) return std::move(m);
    }
    return std::nullopt;
}

MotorGrid Candidats_Moteurs(const Workbench& wb) {
    const Sheet& s = wb.sheet;
    MotorGrid grid;
    double tolMass = 0, tolKv = 0, mass = 0, kv = 0;
    const bool proposal = readCell(s, F_CALC_MOT::Slider1, tolMass) && readCell(s, F_CALC_MOT::Slider2, tolKv) &&
                          readCell(s, F_CALC_MOT::T_Masse_Moteur, mass) && readCell(s, F_CALC_MOT::kv, kv);
    if (proposal) {
        // Percent of the value, multiplied first so that whole figures give
        // whole bounds; a motor right on a bound is kept.
        const double dMass = std::fabs(tolMass * mass / 100), dKv = std::fabs(tolKv * kv / 100);
        auto within = [](double v, double centre, double delta) {
            const double slack = 1e-9 * (std::fabs(centre) + delta);
            return v >= centre - delta - slack && v <= centre + delta + slack;
        };
        for (MotorRecord& m : ReadMotors(motorFilePath(wb))) {
            if (within(m.Masse, mass, dMass) && within(m.Kv, kv, dKv)) grid.rows.push_back(std::move(m));
        }
    }
    const size_t n = grid.rows.size();
    grid.header = {std::to_string(n), n > 1 ? "Modèle(s)" : " Modèle", "Type", "Kv", "Io", "Ra", "Masse"};
    return grid;
}

std::vector<std::string> gridCells(const MotorRecord& m) {
    return {m.Marque, m.Modele, m.Type, plain(m.Kv), plain(m.Io), plain(m.Ra), plain(m.Masse)};
}

bool CandidateClicked(Workbench& wb, std::string_view marque, std::string_view modele) {
    const std::optional<MotorRecord> m = Charge_Moteur(wb, marque, modele);
    if (!m) return false;
    Sheet& s = wb.sheet;
    s.set(F_CALC_MOT::Ra, plain(m->Ra));
    s.set(F_CALC_MOT::Io, plain(m->Io));
    s.set(F_CALC_MOT::G29, plain(m->Kv));
    CALC08(wb);
    return true;
}

}  // namespace tarvokin
