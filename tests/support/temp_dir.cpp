#include "support/temp_dir.h"

#include <atomic>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace tarvokin::test {

TempDir::TempDir() {
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("tarvokin-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

void writeBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
}

std::string readBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

void copyInstallation(const std::filesystem::path& dir) {
#ifdef TARVOKIN_DATA_DIR
    std::filesystem::copy(TARVOKIN_DATA_DIR, dir,
                          std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
#else
    (void)dir;
#endif
}

}  // namespace tarvokin::test
