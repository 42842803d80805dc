#include "core/file_replace.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <unistd.h>

namespace tarvokin {

namespace fs = std::filesystem;

namespace {

std::string reasonOf(int err) {
    switch (err) {
    case EACCES:
    case EPERM: return "accès refusé";
    case EROFS: return "le support est en lecture seule";
    case ENOSPC:
    case EDQUOT: return "le disque est plein";
    case EFBIG: return "fichier trop grand pour le support";
    case ENOENT: return "le dossier n'existe pas";
    case ENOTDIR: return "le chemin ne mène pas à un dossier";
    case EISDIR: return "le chemin désigne un dossier";
    case ELOOP: return "trop de liens symboliques";
    case EIO: return "erreur d'entrée-sortie";
    default: return std::error_code(err, std::generic_category()).message();
    }
}

// The file a path names once its symbolic links are followed, so that
// replacing it keeps the links the user made (a link to a project on another
// disk stays a link). A dangling link names the file it would point to.
fs::path throughLinks(const fs::path& file) {
    fs::path p = file;
    std::error_code ec;
    for (int hops = 0; hops < 40 && fs::is_symlink(fs::symlink_status(p, ec)); ++hops) {
        const fs::path to = fs::read_symlink(p, ec);
        if (ec) break;
        p = to.is_absolute() ? to : p.parent_path() / to;
    }
    return p;
}

bool sameBytes(const fs::path& file, std::string_view bytes) {
    std::error_code ec;
    const auto size = fs::file_size(file, ec);
    if (ec || size != bytes.size()) return false;
    std::ifstream in(file, std::ios::binary);
    if (!in) return false;
    const std::string have((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return !in.bad() && have == bytes;
}

bool fail(std::string* reason, const std::string& why) {
    if (reason) *reason = why;
    return false;
}

}  // namespace

bool replaceFile(const fs::path& link, std::string_view bytes, std::string* reason) {
    static std::atomic<unsigned> counter{0};
    std::error_code ec;
    if (link.filename().empty()) return fail(reason, reasonOf(EISDIR));
    const fs::path file = throughLinks(link);

    const fs::file_status st = fs::status(file, ec);
    const bool exists = !ec && fs::exists(st);
    if (exists && fs::is_directory(st)) return fail(reason, reasonOf(EISDIR));
    // Writing the same bytes again would only change the file's date.
    if (exists && sameBytes(file, bytes)) return true;
    if (exists) {
        // The rename would replace a read-only file as easily as any other,
        // since it needs only the folder's permission: respect the user's mark.
        const fs::perms anyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
        if ((st.permissions() & anyWrite) == fs::perms::none || ::access(file.c_str(), W_OK) != 0)
            return fail(reason, "le fichier est en lecture seule");
    }

    const fs::path temp = file.parent_path() / ("." + file.filename().string() + ".tmp" +
                                                std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::FILE* out = std::fopen(temp.c_str(), "wb");
    if (!out) return fail(reason, reasonOf(errno));
    int err = 0;
    auto note = [&err](bool ok) {
        if (!ok && err == 0) err = errno ? errno : EIO;
        return ok;
    };
    errno = 0;
    bool ok = note(bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size());
    ok = note(std::fflush(out) == 0) && ok;
    // The rename must not reach the disk before the data, or a crash could
    // leave an empty file under the good name.
    ok = note(::fsync(::fileno(out)) == 0) && ok;
    ok = note(std::fclose(out) == 0) && ok;

    if (ok) {
        // Keep the target's permissions, as an in-place rewrite would.
        if (exists) fs::permissions(temp, st.permissions(), ec);
        fs::rename(temp, file, ec);
        if (ec) err = ec.value();
        ok = !ec;
    }
    if (!ok) {
        fs::remove(temp, ec);
        return fail(reason, reasonOf(err));
    }
    return true;
}

std::string writeFailureMessage(const fs::path& file, const std::string& reason) {
    return "Impossible d'enregistrer " + file.string() + " : " + reason + ".\nLe fichier précédent est conservé.";
}

}  // namespace tarvokin
