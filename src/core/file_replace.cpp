#include "core/file_replace.h"

#include <atomic>
#include <cstdio>
#include <string>
#include <system_error>
#include <unistd.h>

namespace tarvokin {

bool replaceFile(const std::filesystem::path& file, std::string_view bytes) {
    namespace fs = std::filesystem;
    static std::atomic<unsigned> counter{0};
    std::error_code ec;
    if (file.filename().empty()) return false;

    const fs::path temp = file.parent_path() / ("." + file.filename().string() + ".tmp" +
                                                std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::FILE* out = std::fopen(temp.c_str(), "wb");
    if (!out) return false;
    bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    ok = std::fflush(out) == 0 && ok;
    // The rename must not reach the disk before the data, or a crash could
    // leave an empty file under the good name.
    ok = ::fsync(::fileno(out)) == 0 && ok;
    ok = std::fclose(out) == 0 && ok;

    if (ok) {
        // Keep the target's permissions, as an in-place rewrite would.
        const fs::file_status st = fs::status(file, ec);
        if (!ec && fs::exists(st)) fs::permissions(temp, st.permissions(), ec);
        fs::rename(temp, file, ec);
        ok = !ec;
    }
    if (!ok) fs::remove(temp, ec);
    return ok;
}

}  // namespace tarvokin
