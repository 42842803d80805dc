#include "core/list_items.h"

namespace tarvokin {

const std::vector<FixedList>& fixedLists() {
    static const std::vector<FixedList> lists = {
        {F_GEO_STAB::b21, {"180", "120", "115", "110", "105", "100", "95", "90"}},
        {F_WIZZARD::b21, {"180", "120", "115", "110", "105", "100", "95", "90"}},
        // Wing height on the fuselage: high, middle, low.
        {F_WIZZARD::Combo1, {"Haute", "Médiane", "Basse"}},
        {F_WIZZARD::Combo2, {"Base", "Haut", "Milieu"}},
        {F_WIZZARD::Combo3, {"Caisse", "Arrondi"}},
        {F_CONVERT::Combo1,
         {"Longueur", "Surface", "Masse", "Vitesse", "Charge alaire", "Puissance"}},
        {F_CONVERT::Combo2, {"mm", "cm", "m", "in", "ft"}},
        {F_CONVERT::Combo3, {"mm", "cm", "m", "in", "ft"}},
        // Stabiliser section: positions 0-1 thin (Cx 0.010), 2-3 medium (0.015),
        // 4 thick (0.020); the cambered ones (1, 3) are set 1.5 degrees apart.
        {F_3D::Combo7,
         {"Symétrique mince", "Porteur mince", "Symétrique moyen", "Porteur moyen", "Épais"}},
        // Fuselage cross-section: shape factor 1, 1.2, 1.4.
        {F_3D::Combo9, {"Profilé rond", "Ovale", "Caisse"}},
        // Tail cone: plan factor 0.55, 0.7, 0.85; neutral point at 15, 20, 25 % of length.
        {F_3D::Combo10, {"Poutre fine", "Cône effilé", "Queue large"}},
        {F_3D::Combo1, {"NiCd / NiMh", "A123", "Lipo / Li-ion"}},
        {F_3D::Combo2, {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}},
        {F_3D::Combo3, {"Basse", "Moyenne", "Haute"}},
        // Motor type: a brushless motor, or a classic brushed one.
        {F_3D::Combo4, {"Brushless", "Classique"}},
        // Propeller make: the name decides the power constant (APC, Camprop, Master, other).
        {F_3D::Combo6, {"Générique", "APC", "Camprop", "GWS", "Master"}},
        {F_PROFILS::Combo0, {"Cl / Cd", "Cm / Cl", "Cl / Alpha", "Cm / Alpha", "Cd / Alpha"}},
        {F_PROFILS::Combo1, {"Cl / Cd", "Cm / Cl", "Cl / Alpha", "Cm / Alpha", "Cd / Alpha"}},
        // The quantities of the boundary-layer chart of the pressure window.
        {F_AERO::Combo1, {"Hk", "Top Dt", "Bot Dt", "Ue/V", "Cf", "Cd", "A/Ao", "Ct", "Log10 Ret", "Ret"}},
        // XFOIL's Reynolds types: 1 Re fixed, 2 Re sqrt(CL) fixed, 3 Re CL fixed.
        {F_AERO::Type, {"1 : Re fixe", "2 : Re.√CL fixe", "3 : Re.CL fixe"}},
        {F_CALC_MOT::G3,
         {"Avion léger", "Planeur début", "Planeur rapide", "Racer", "Remorqueur", "Traineur",
          "Voltige f3a", "Voltige loisir", "Maquette"}},
        // Share of the mass given to the motor and the battery: 70 % or 55 %.
        {F_CALC_MOT::G9, {"70 %", "55 %"}},
        {F_CALC_MOT::G13, {"NiCd / NiMh", "A123", "Lipo / Li-ion"}},
        {F_CALC_MOT::choix_helice, {"Générique", "APC", "Camprop", "GWS"}},
        // Shown in this order; the position + 1 is the quality number of the efficiency.
        {F_CALC_MOT::qualite_moteur, {"Haute", "Basse", "Moyenne"}},
        {F_CALC_MOT::type_moteur, {"Brushless", "Classique"}},
        // Opening of the V tail between its two half panels, degrees.
        {F_STAB::Angle_V, {"180", "120", "115", "110", "105", "100", "95", "90"}},
    };
    return lists;
}

double openingAngle(int listIndex) {
    static const double angles[] = {180, 120, 115, 110, 105, 100, 95};
    if (listIndex >= 0 && listIndex < 7) return angles[listIndex];
    return 90;
}

}  // namespace tarvokin
