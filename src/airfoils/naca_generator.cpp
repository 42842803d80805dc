// The NACA generator: the stations, the inputs of each family, the name, and
// the surfaces built from a thickness form and a mean line.
#include "airfoils/naca_generator.h"

#include <cmath>
#include <cstdio>

#include "core/numbers.h"
#include "core/translations.h"

namespace tarvokin {

namespace {

constexpr const char* kFirst = "Premier Chiffre";
constexpr const char* kSecond = "Second Chiffre";
constexpr const char* kThird = "Troisième Chiffre";
constexpr const char* kLast = "2 derniers Chiffres";

const std::vector<NacaInput> kInputs[naca::kFamilies] = {
    {{"Cambrure % corde", kFirst, 0, 9, 2}, {"pos de la cambrure %", kSecond, 0, 9, 4},
     {"Ep relative de la corde", kLast, 1, 99, 12}},
    {{"Cambrure % corde", kFirst, 0, 9, 2}, {"pos de la cambrure %", kSecond, 1, 5, 3},
     {"Type", kThird, 0, 1, 0}, {"Ep relative de la corde", kLast, 1, 99, 12}},
    {{"Cambrure % corde", kFirst, 0, 9, 2}, {"pos de la cambrure %", kSecond, 0, 9, 4},
     {"Ep relative de la corde", kLast, 1, 99, 12}, {"Bord attaque", "", 1, 9, 6}, {"Point ep max", "", 1, 9, 4}},
    {{"Cambrure % corde", kFirst, 0, 9, 2}, {"pos de la cambrure %", kSecond, 1, 5, 3},
     {"Type", kThird, 0, 1, 0}, {"Ep relative de la corde", kLast, 1, 99, 12}, {"Bord attaque", "", 1, 9, 6},
     {"Point ep max", "", 1, 9, 3}},
    {{"Série", "", 16, 16, 16}, {"Cambrure", kFirst, 0, 9, 2}, {"Ep relative de la corde", kLast, 1, 99, 12}},
    {{"Série", "", 63, 67, 64}, {"indice ligne de cambrure", "", 0, 9, 0}, {"Cambrure % corde", kFirst, 0, 9, 2},
     {"ep relative de la corde", kLast, 1, 99, 12}},
    {{"Série", "", 63, 65, 64}, {"indice ligne de cambrure", "", 0, 9, 0}, {"Cambrure % corde", kFirst, 0, 9, 2},
     {"ep relative de la corde", kLast, 1, 99, 12}},
    {{"Ep relative de la corde", "", 1, 99, 12}},
};

const char* kFamilyCaptions[naca::kFamilies] = {"Naca 4",         "Naca 5",        "Naca 4 modifié",
                                                "Naca 5 modifié", "Naca série 16", "Naca série 6",
                                                "Naca série 6A",  "Biconvexe symétrique"};
const char* kDistributions[4] = {"Distribution homogène", "Distribution serrée sur BA",
                                 "Distribution serrée sur BF", "Distribution serrée sur BA et BF"};

std::string two(int v) {
    char b[8];
    std::snprintf(b, sizeof b, "%02d", v);
    return b;
}

double r7(double v) {
    const double r = roundHalfAway(v, 7);
    return r == 0.0 ? 0.0 : r;  // no "-0.0000000" in a file
}

// The inputs' words in English, Spanish and Italian.
constexpr Translation kWords[] = {
    {"Cambrure % corde", {"Camber % Chord", "Camber % cuerda", "Curvatura % corda"}},
    {"pos de la cambrure %", {"Camber position %", "Posición de la curvatura %", "Posizione della curvatura %"}},
    {"Ep relative de la corde", {"Thickness % Chord", "Espesor % cuerda", "Spessore % corda"}},
    {"ep relative de la corde", {"Thickness % Chord", "Espesor % cuerda", "Spessore % corda"}},
    {"Type", {"Type", "Tipo", "Tipo"}},
    {"Bord attaque", {"Leading edge", "Borde de ataque", "Bordo d'attacco"}},
    {"Point ep max", {"Max thickness point", "Punto de espesor máx.", "Punto di spessore max"}},
    {"Série", {"Series", "Serie", "Serie"}},
    {"Cambrure", {"Camber", "Curvatura", "Curvatura"}},
    {"indice ligne de cambrure", {"Mean line index", "Índice de línea media", "Indice linea media"}},
    {"Premier Chiffre", {"First digit", "Primera cifra", "Prima cifra"}},
    {"Second Chiffre", {"Second digit", "Segunda cifra", "Seconda cifra"}},
    {"Troisième Chiffre", {"Third digit", "Tercera cifra", "Terza cifra"}},
    {"2 derniers Chiffres", {"Last 2 digits", "2 últimas cifras", "Ultime 2 cifre"}},
};

}  // namespace

std::string NacaWord(const char* french, const std::string& languageCode) {
    return InLanguage(kWords, french, languageCode);
}

const char* NacaFamilyCaption(int family) {
    return family >= 0 && family < naca::kFamilies ? kFamilyCaptions[family] : "";
}

const std::vector<NacaInput>& NacaInputs(int family) {
    static const std::vector<NacaInput> none;
    return family >= 0 && family < naca::kFamilies ? kInputs[family] : none;
}

const char* NacaDistributionCaption(int d) { return d >= 0 && d < 4 ? kDistributions[d] : ""; }

std::vector<double> NacaStations(int n, int distribution) {
    std::vector<double> x;
    if (n < 2 || distribution < 0 || distribution > 3) return x;
    x.resize(static_cast<size_t>(n));
    const double pi = naca::kStationPi;
    const double half = (pi / 2) / (n - 1), full = pi / (n - 1);
    for (int i = 1; i <= n; ++i) {
        const double k = i - 1;
        double v = 0;
        switch (distribution) {
            case 0: v = k / (n - 1); break;
            case 1: v = 1 - std::cos(k * half); break;
            case 2: v = std::cos(pi / 2 - k * half); break;
            default: v = 0.5 - 0.5 * std::cos(k * full); break;
        }
        x[static_cast<size_t>(i - 1)] = v;
    }
    return x;
}

std::string NacaName(const NacaRequest& r) {
    const auto& d = r.design;
    switch (r.family) {
        case naca::Four: return "NACA" + std::to_string(d[0]) + std::to_string(d[1]) + two(d[2]);
        case naca::Five: return "NACA" + std::to_string(d[0]) + std::to_string(d[1]) + std::to_string(d[2]) + two(d[3]);
        case naca::FourModified:
            return "NACA" + std::to_string(d[0]) + std::to_string(d[1]) + two(d[2]) + "-" + std::to_string(d[3]) +
                   std::to_string(d[4]);
        case naca::FiveModified:
            return "NACA" + std::to_string(d[0]) + std::to_string(d[1]) + std::to_string(d[2]) + two(d[3]) + "-" +
                   std::to_string(d[4]) + std::to_string(d[5]);
        case naca::Series16: return "NACA" + std::to_string(d[0]) + "-" + std::to_string(d[1]) + two(d[2]);
        case naca::Series6:
            // The subscript of the low-drag range follows the series (64 sub 1 -> "641").
            return "NACA" + std::to_string(d[0]) + (d[1] ? std::to_string(d[1]) : "") + "-" + std::to_string(d[2]) +
                   two(d[3]);
        case naca::Series6A:
            return "NACA" + std::to_string(d[0]) + (d[1] ? std::to_string(d[1]) : "") + "A" + std::to_string(d[2]) +
                   two(d[3]);
        case naca::Biconvex: return "BICONVEX" + std::to_string(d[0]);
        default: return "";
    }
}

bool GenerateNaca(const NacaRequest& r, NacaAirfoil& out, std::string& error) {
    if (r.family < 0 || r.family >= naca::kFamilies) {
        error = "Famille de profil inconnue";
        return false;
    }
    const auto& inputs = kInputs[r.family];
    for (size_t i = 0; i < inputs.size(); ++i) {
        const int v = r.design[i];
        if (v < inputs[i].low || v > inputs[i].high) {
            error = std::string(inputs[i].caption) + " : " + std::to_string(v) + " hors des limites (" +
                    std::to_string(inputs[i].low) + " à " + std::to_string(inputs[i].high) + ")";
            return false;
        }
    }
    if (r.points < 2 || r.points > naca::kMaxPoints) {
        error = "Nbre de Points : " + std::to_string(r.points) + " hors des limites (2 à " +
                std::to_string(naca::kMaxPoints) + ")";
        return false;
    }
    const std::vector<double> x = NacaStations(r.points, r.distribution);
    if (x.empty()) {
        error = "Distribution inconnue";
        return false;
    }
    const auto& d = r.design;
    const size_t n = x.size();
    std::vector<double> yt(n, 0.0);
    std::vector<MeanLinePoint> mean(n);
    bool hasMean = true;

    // Thickness form.
    switch (r.family) {
        case naca::Four:
        case naca::Five: {
            const double t = d[r.family == naca::Four ? 2 : 3] / 100.0;
            for (size_t i = 0; i < n; ++i) yt[i] = NacaFourThickness(x[i], t);
            break;
        }
        case naca::FourModified:
        case naca::FiveModified: {
            const size_t k = r.family == naca::FourModified ? 2 : 3;
            const double t = d[k] / 100.0, I = d[k + 1], m = d[k + 2] / 10.0;
            for (size_t i = 0; i < n; ++i) yt[i] = NacaModifiedThickness(x[i], t, I, m);
            break;
        }
        case naca::Series16:
            // The 16-series form is the modified four-digit one with a
            // leading-edge index of 4 and the largest thickness at mid-chord.
            for (size_t i = 0; i < n; ++i) yt[i] = NacaModifiedThickness(x[i], d[2] / 100.0, 4, 0.5);
            break;
        case naca::Series6:
        case naca::Series6A: {
            const std::string series = std::to_string(d[0]) + (r.family == naca::Series6A ? "A" : "");
            if (!Naca6Thickness(series, d[3], x, yt, error)) return false;
            break;
        }
        case naca::Biconvex: {
            const double t = d[0] / 100.0, R = (0.25 + t * t / 4) / t;
            for (size_t i = 0; i < n; ++i) {
                const double u = x[i] - 0.5;
                yt[i] = std::max(0.0, std::sqrt(std::max(0.0, R * R - u * u)) - (R - t / 2));
            }
            hasMean = false;
            break;
        }
    }

    // Mean line.
    switch (r.family) {
        case naca::Four:
        case naca::FourModified: {
            const double m = d[0] / 100.0, p = d[1] / 10.0;
            if (m != 0.0 && p == 0.0) {
                error = "Position de la cambrure nulle : division par zéro, profil non généré";
                return false;
            }
            for (size_t i = 0; i < n; ++i) mean[i] = NacaFourMeanLine(x[i], m, p);
            break;
        }
        case naca::Five:
        case naca::FiveModified:
            for (size_t i = 0; i < n; ++i) {
                if (!NacaFiveMeanLine(x[i], d[0], d[1], d[2], mean[i])) {
                    error = "Pas de ligne moyenne publiée pour la position " + std::to_string(d[1]) + " du type " +
                            std::to_string(d[2]);
                    return false;
                }
            }
            break;
        case naca::Series16:
            for (size_t i = 0; i < n; ++i) mean[i] = NacaMeanLineA10(x[i], d[1] / 10.0);
            break;
        case naca::Series6:
            for (size_t i = 0; i < n; ++i) mean[i] = NacaMeanLineA10(x[i], d[2] / 10.0);
            break;
        case naca::Series6A:
            for (size_t i = 0; i < n; ++i) mean[i] = NacaMeanLineA08Modified(x[i], d[2] / 10.0);
            break;
        default: break;
    }

    NacaAirfoil a;
    a.name = NacaName(r);
    a.hasMeanLine = hasMean;
    a.stations = x;
    a.upper.resize(n);
    a.lower.resize(n);
    a.camber.resize(n);
    double largest = 0;
    for (size_t i = 0; i < n; ++i) {
        // sin and cos of the slope angle atan(slope), without the angle.
        const double k = mean[i].slope, c = 1 / std::sqrt(1 + k * k), s = k * c;
        a.upper[i] = {r7(x[i] - yt[i] * s), r7(mean[i].y + yt[i] * c)};
        a.lower[i] = {r7(x[i] + yt[i] * s), r7(mean[i].y - yt[i] * c)};
        a.camber[i] = {r7(x[i]), r7(mean[i].y)};
        largest = std::max(largest, 2 * yt[i]);
    }
    for (const auto* side : {&a.upper, &a.lower}) {
        for (const OutlinePoint& p : *side) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
                error = "Profil non calculable pour ces valeurs";
                return false;
            }
        }
    }
    a.thickness = 100 * largest;
    out = std::move(a);
    return true;
}

OutlinePoints NacaOutline(const NacaAirfoil& a) {
    OutlinePoints p;
    p.reserve(a.upper.size() * 2);
    for (size_t i = a.upper.size(); i-- > 0;) p.push_back(a.upper[i]);
    for (size_t i = 1; i < a.lower.size(); ++i) p.push_back(a.lower[i]);
    return p;
}

namespace {
std::string pointsText(const OutlinePoints& pts) {
    std::string s;
    s.reserve(pts.size() * 24);
    char b[64];
    for (const OutlinePoint& p : pts) {
        std::snprintf(b, sizeof b, "%.7f %.7f\n", p.x == 0.0 ? 0.0 : p.x, p.y == 0.0 ? 0.0 : p.y);
        s += b;
    }
    return s;
}
}  // namespace

std::string NacaOutlineText(const NacaAirfoil& a) { return pointsText(NacaOutline(a)); }

std::string NacaCamberText(const NacaAirfoil& a) { return pointsText(a.camber); }

}  // namespace tarvokin
