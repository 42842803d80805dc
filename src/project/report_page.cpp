#include "project/report_page.h"

#include "core/cells.h"
#include "core/sheet.h"

namespace tarvokin {

namespace {

std::string trimmed(const std::string& t) {
    const size_t a = t.find_first_not_of(" \t");
    if (a == std::string::npos) return {};
    const size_t b = t.find_last_not_of(" \t");
    return t.substr(a, b - a + 1);
}

// The value shown by a label that reads "caption = value": what follows the
// first "=". A label without one is shown whole.
std::string afterEquals(const std::string& t) {
    const size_t eq = t.find('=');
    return eq == std::string::npos ? t : t.substr(eq + 1);
}

std::string pictureCell(const std::string& file, const std::string& widthAttr) {
    const std::string link = ReportLink(file);
    return "<td align=center><a href='" + link + "'><img src='" + link + "'" + widthAttr + "></a></td>";
}

}  // namespace

std::string ReportModelName(const Sheet& s) { return trimmed(s.text(F_3D::T_NOM_Modele)); }

std::vector<ReportPicture> ReportPictures(const std::string& model) {
    std::vector<ReportPicture> p;
    // The 3D view is picture 11: "_Img_1" followed by its number's last digit.
    p.push_back({ReportSource::View3D, 0, model + "_Img_11.PNG"});
    p.push_back({ReportSource::GlobalChart, 0, model + "_Img_10.PNG"});
    for (int i = 0; i < 3; ++i) p.push_back({ReportSource::Performance, i, model + "_Img_" + std::to_string(i) + ".PNG"});
    for (int i = 0; i < 5; ++i) p.push_back({ReportSource::AspectRatio, i, model + "_Img" + std::to_string(i) + ".PNG"});
    return p;
}

std::string ReportLink(const std::string& file) { return "../MODELES/" + file; }

std::vector<std::string> ReportPageLines(const Sheet& s, const std::string& model) {
    std::vector<std::string> out;
    auto add = [&out](std::string line) { out.push_back(std::move(line)); };
    auto t = [&s](Cell c) { return s.text(c); };
    const std::vector<ReportPicture> pics = ReportPictures(model);

    add("<HTML>");
    add("<BODY>");
    add("<div align=13><font size=8><strong>" + model + "</strong></font> </div>");

    add("<p>");
    add("<table>");
    add("<tr>");
    add(pictureCell(pics[0].file, " width=250"));
    add(pictureCell(pics[1].file, " "));
    add("</tr>");
    add("</table>");
    add("</p>");

    add("<p>");
    add("<table border=1>");
    add("<tr>");
    add("<td align=center>Masse mini </td>");
    add("<td align=center>Charge mini</td>");
    add("<td align=center>Masse maxi </td>");
    add("<td align=center>Charge mini</td>");
    add("</tr>");
    add("<tr>");
    add("<td align=center>" + t(F_GEO_SF_REGLAGES::H30) + "</td>");
    add("<td align=center>" + t(F_GEO_SF_REGLAGES::I30) + "</td>");
    add("<td align=center>" + t(F_GEO_SF_REGLAGES::H32) + " </td>");
    add("<td align=center>" + t(F_GEO_SF_REGLAGES::I32) + "</td>");
    add("</tr>");
    add("</table>");
    add("</p>");

    // A row ends in " </td></tr>" where `spaced` says so, as the page always had it.
    struct Row {
        const char* label;
        std::string value;
        bool spaced;
    };
    auto section = [&](const char* head, const std::vector<Row>& rows) {
        add(std::string("<p> <font size=6><strong>") + head + "</strong></font><br>");
        add("<table border=1>");
        add("<tr>");
        for (const Row& r : rows)
            add(std::string("<tr><td>") + r.label + "</td><td>" + r.value + (r.spaced ? " </td></tr>" : "</td></tr>"));
        add("</tr>");
        add("</table>");
        add("</p>");
    };
    section("AILE ", {
                         {"Envergure", t(F_3D::j6), false},
                         {"Profil", t(F_3D::T_PROFIL_3D), false},
                         {"Surface", t(F_3D::j4), true},
                         {"Allongement", t(F_3D::j7), true},
                         {"Allongement elliptique", t(F_3D::j8), true},
                         {"Alpha0", t(F_3D::j12), true},
                         {"Cm0", t(F_3D::j11), false},
                         {"Re Saumon", t(F_GEO_SF::c12), false},
                         {"Re Emplanture", t(F_GEO_SF::b12), false},
                         {"Corde Moyenne", t(F_3D::j5), false},
                         {"Re Corde Moyenne", t(F_GEO_SF::D12), true},
                         {"Cz de calage", t(F_GEO_SF_REGLAGES::F29), false},
                         {"Calage aile", afterEquals(t(F_3D::f31a)), true},
                         {"Vé longitudinal", afterEquals(t(F_3D::f30a)), true},
                     });
    section("STAB ", {
                         {"Envergure", t(F_3D::j17), false},
                         {"Surface", t(F_GEO_STAB::j15), true},
                         {"Allongement", t(F_GEO_STAB::j18), false},
                         {"Allongement elliptique", t(F_GEO_STAB::j19), true},
                         {"Corde Moyenne", t(F_GEO_STAB::j16), true},
                         {"Cx0 (Re 100k)", t(F_3D::CX0_STAB), true},
                         {"Hauteur projetée", t(F_3D::D20), true},
                         {"Bras de levier", t(F_GEO_STAB::j21), true},
                         {"Volume de stab", t(F_3D::j22), true},
                         {"Calage Stab", afterEquals(t(F_3D::f32a)), true},
                     });

    add("<p> <font size=6><strong>DERIVE </strong></font><br>");
    add("<table border=1>");
    add("<tr>");
    add("<td>Surface</td><td>" + t(F_3D::d21) + " dm </td>");
    add("</table>");
    add("</p>");

    add("<p> <strong><font size=6>CENTRAGES </font></strong><br>");
    add("<table border=1>");
    add("<tr><td>CG</td><td>entre " + t(F_GEO_SF_REGLAGES::C30) + " et " + t(F_GEO_SF_REGLAGES::C31) + " </td></tr>");
    add("<tr><td>Foyer Aile</td><td>" + t(F_GEO_SF::j99) + "  </td></tr>");
    add("<tr><td>Foyer Stab</td><td>" + t(F_3D::J20) + "  </td></tr>");
    add("<tr><td>Foyer Fuselage</td><td>" + t(F_3D::j26a) + "  </td></tr>");
    add("<tr><td>Foyer Global</td><td>" + t(F_3D::j9) + " </td></tr>");
    add("</table>");
    add("</p>");

    add("<p> <strong><font size=6>MOTORISATION </font></strong></p>");
    // The first row of a power sub-section closes its label cell, the others
    // never did; browsers read both alike.
    auto power = [&](const char* name, const std::vector<std::pair<const char*, std::string>>& rows) {
        add(std::string("<p> <strong><font size=5>") + name + " </font></strong><br>");
        add("<table border=1>");
        for (size_t i = 0; i < rows.size(); ++i)
            add(std::string("<tr><td>") + rows[i].first + (i == 0 ? "</td><td>" : "<td>") + rows[i].second +
                "</td></tr>");
        add("</tr>");
        add("</table>");
        add("</p>");
    };
    power("Accus", {{"Type", t(F_3D::Combo1)},
                    {"Nbre elements", t(F_3D::Combo2)},
                    {"Capacité (mAh)", t(F_3D::b6)},
                    {"tension (V)", t(F_3D::b7)},
                    {"Décharge (xC)", t(F_3D::b8)}});
    power("Moteur", {{"Type", t(F_3D::Combo4)},
                     {"Qualité", t(F_3D::Combo3)},
                     {"I (A)", t(F_3D::d6)},
                     {"Réduction 1 :", t(F_3D::d7)},
                     {"Kv (Tr/min:V)", t(F_3D::d8)}});
    power("Hélice", {{"Type", t(F_3D::Combo6)},
                     {"Diamètre (')", t(F_3D::f5)},
                     {"Pas (')", t(F_3D::f6)},
                     {"Régime (Tr/min)", t(F_3D::f7)},
                     {"T statique (g)", t(F_3D::f8)}});
    power("Performances", {{"Vitesse palier (Km/h)", t(F_3D::h3)},
                           {"Vitesse ascensionnelle à masse mini (m/s)", t(F_3D::h4)},
                           {"Vitesse ascensionnelle à masse maxi (m/s)", t(F_3D::h6)},
                           {"Temps moteur (min)", t(F_3D::h8)}});

    add("<p> <font size=7><strong>AERODYNAMIQUE </strong></font></p>");
    add("<p>");
    add("<table border=1>");
    add("<tr>");
    add("<td align=center>taux de chute</td>");
    add("<td align=center>finesse</td>");
    add("<td align=center>Cz</td>");
    add("</tr>");
    add("<tr>");
    for (int i = 2; i < 5; ++i) add(pictureCell(pics[static_cast<size_t>(i)].file, ""));
    add("</tr>");
    add("</table>");
    add("</p>");

    add("<p>");
    add("<table border=1>");
    add("<tr>");
    add("<td align=center>Vitesse de Vol (km/h) / Cz Aile</td>");
    add("<td align=center>Potentiel Finesse max Aile / Cz Aile</td>");
    add("<td align=center>Finesse Aile en virage serré / Allongement</td>");
    add("<TD align=center>Allongement optimal / Cz Aile</td>");
    add("<TD align=center>Finesse Aile (à allongement choisi) / Cz Aile</td>");
    add("</tr>");
    add("<tr>");
    for (int i = 5; i < 10; ++i) add(pictureCell(pics[static_cast<size_t>(i)].file, ""));
    add("</tr>");
    add("</table>");
    add("</p>");

    add("</BODY>");
    add("</HTML>");
    return out;
}

}  // namespace tarvokin
