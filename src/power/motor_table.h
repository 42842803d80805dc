// The motor catalogue DATA/MOTEURS.CSV: one motor a line, "Marque;Modele;
// Type;Kv;Io;Ra;Masse" after a header line. It is read afresh on each use, so
// an edit of the file shows at the next look-up without any reload.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvokin {

class Workbench;

struct MotorRecord {
    std::string Marque, Modele, Type;
    double Kv = 0, Io = 0, Ra = 0, Masse = 0;
};

// home/DATA/MOTEURS.CSV, in whatever letter case the folder holds it.
std::filesystem::path motorFilePath(const Workbench& wb);

// Every motor of the file, in file order. Fields are trimmed; seven columns
// are taken and the rest ignored; a missing or unreadable number reads 0. A
// line without a brand and a model (blank, junk) is no motor. A missing file
// gives no motor.
std::vector<MotorRecord> ReadMotors(const std::filesystem::path& file);

// "Marque@Modele", the key of a motor in the tree and the combo.
std::string motorKey(std::string_view marque, std::string_view modele);

// The tree of the motor calculation window: one node per brand in order of
// first appearance, one child per motor; a key seen twice is listed once.
struct MotorBrand {
    std::string Marque;
    std::vector<std::string> Modeles;
};
std::vector<MotorBrand> Get_Marque_Motor(const Workbench& wb);

// The first motor whose brand and model both match, or none.
std::optional<MotorRecord> Charge_Moteur(const Workbench& wb, std::string_view marque, std::string_view modele);

// The grid of candidates: a header (the count, the caption "Modèle(s)" or
// " Modèle", then the columns) and one row per motor.
struct MotorGrid {
    std::vector<std::string> header;
    std::vector<MotorRecord> rows;
};
// Motors within the tolerances (Slider1 % of T_Masse_Moteur, Slider2 % of kv)
// of the proposal of F_CALC_MOT, both bounds included. No proposal, no motor.
MotorGrid Candidats_Moteurs(const Workbench& wb);
// The text of a grid row's cells, as the grid shows them.
std::vector<std::string> gridCells(const MotorRecord& m);

// A click on a candidate: the motor is loaded and its Ra, Io and Kv go to the
// chosen set (Ra, Io, G29), which is then evaluated. False when the file no
// longer holds it.
bool CandidateClicked(Workbench& wb, std::string_view marque, std::string_view modele);

}  // namespace tarvokin
