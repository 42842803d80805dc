// A fresh folder for one test, removed at the end; and small file helpers.
#pragma once

#include <filesystem>
#include <string>

namespace tarvokin::test {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

// Writes bytes exactly as given; reads a whole file as bytes ("" when missing).
void writeBytes(const std::filesystem::path& file, const std::string& bytes);
std::string readBytes(const std::filesystem::path& file);

// A copy of the shipped installation folder (data/) into dir, as a user's home.
void copyInstallation(const std::filesystem::path& dir);

}  // namespace tarvokin::test
