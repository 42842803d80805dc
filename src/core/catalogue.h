// The airfoil catalogue, DATA/GENERIC.CSV: the airfoils the program knows,
// with the moment coefficient and zero-lift angle cached from their polars.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tarvokin {

struct CatalogueRow {
    std::string Profil;
    double Cm0 = 0.0;
    double Alpha0 = 0.0;
    std::string Path;
};

constexpr size_t kNotFound = 9999999;

class ProfilCatalogue {
public:
    std::vector<CatalogueRow> rows;

    // Reads the file: the first line (a header) is skipped; each row gives
    // Profil (before the first ";"), Cm0 and Alpha0 (second and third fields,
    // 0 when not numeric) and Path (behind the last ";"). False when the file
    // cannot be opened; rows then stay as they were.
    bool read(const std::filesystem::path& file);

    // Rewrites the file: the fixed header line, then "Profil;Cm0;Alpha0;Path"
    // rows with "," of paths turned into ".". Written beside, then replaced,
    // only when the text differs; false with the reason when it could not be.
    bool write(const std::filesystem::path& file, std::string* reason = nullptr) const;

    // Index of the first row whose upper-case name equals the upper-case name,
    // or kNotFound (9999999).
    size_t Find_Profil(std::string_view name) const;

    std::vector<std::string> names() const;
};

}  // namespace tarvokin
