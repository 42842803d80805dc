#include "shell/home.h"

#include <cstdlib>
#include <system_error>

namespace tarvokin {

namespace fs = std::filesystem;

fs::path shippedDataFolder(const fs::path& executable) {
    std::error_code ec;
    // A program started through the search path knows itself only by name:
    // the kernel's link to the running file says where it was installed.
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec || self.empty()) self = fs::weakly_canonical(executable, ec);
    const fs::path exeDir = self.parent_path();
    const fs::path candidates[] = {
        exeDir / ".." / "share" / "tarvokin",
#ifdef TARVOKIN_SHIPPED_DATA
        fs::path(TARVOKIN_SHIPPED_DATA),
#endif
        exeDir / ".." / "data",
    };
    for (const fs::path& c : candidates) {
        if (fs::exists(c / "TARVOKIN.INI", ec)) return fs::weakly_canonical(c, ec);
    }
    return {};
}

fs::path userHomeFolder(const std::optional<fs::path>& requested) {
    if (requested && !requested->empty()) {
        std::error_code ec;
        fs::path abs = fs::absolute(*requested, ec);
        return ec ? *requested : abs;
    }
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg) return fs::path(xdg) / "tarvokin";
    if (const char* home = std::getenv("HOME"); home && *home) return fs::path(home) / ".local" / "share" / "tarvokin";
    return fs::current_path() / "tarvokin-home";
}

bool seedHomeFolder(const fs::path& home, const fs::path& shipped, std::string& error) {
    std::error_code ec;
    fs::create_directories(home, ec);
    if (ec || !fs::is_directory(home)) {
        error = "Impossible de créer le dossier " + home.string() + " : " + ec.message();
        return false;
    }
    if (shipped.empty() || fs::equivalent(home, shipped, ec)) return true;
    for (auto it = fs::recursive_directory_iterator(shipped, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec)) {
        fs::path rel = fs::relative(it->path(), shipped, ec);
        fs::path target = home / rel;
        if (it->is_directory()) {
            fs::create_directories(target, ec);
        } else if (!fs::exists(target)) {
            fs::create_directories(target.parent_path(), ec);
            fs::copy_file(it->path(), target, ec);
            if (!ec) {
                // The shipped files may be read-only; the user's copies are theirs to change.
                fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add, ec);
            }
        }
        ec.clear();
    }
    return true;
}

}  // namespace tarvokin
