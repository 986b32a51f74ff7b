#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace kestrune::test {

// The recorded files of a machine, which are below the folder like those of a real one below the root.
inline std::string fixture(std::string_view machine) {
  return std::filesystem::path(KESTRUNE_FIXTURES).append(machine).string();
}

// A folder that goes with its content when the test ends.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "kestrune-test-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

  // Writes into the file that is there, as the kernel changes its own, or makes it with its folders.
  void write(std::string_view name, std::string_view content) const {
    const std::filesystem::path file = *this / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
  }
  std::string read(std::string_view name) const {
    std::ostringstream text;
    text << std::ifstream(*this / name, std::ios::binary).rdbuf();
    return text.str();
  }
  bool has(std::string_view name) const { return std::filesystem::exists(*this / name); }

  // Writes an executable script. Returns its path.
  std::string script(std::string_view name, std::string_view content) const {
    write(name, content);
    std::filesystem::permissions(*this / name, std::filesystem::perms::owner_all);
    return *this / name;
  }
  // Makes a symbolic link with its folders, in place of any file of that name.
  void link(std::string_view name, const std::string& target) const {
    const std::filesystem::path file = *this / name;
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::remove(file);
    std::filesystem::create_symlink(target, file);
  }

 private:
  std::string path_;
};

}  // namespace kestrune::test
