// The program itself, run as people run it, in a folder of the test's own.
#ifndef PXDUTIL_TESTS_PXD_COMMAND_FIXTURE_H
#define PXDUTIL_TESTS_PXD_COMMAND_FIXTURE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "run_program.h"

namespace pxd_test {

namespace fs = std::filesystem;

inline std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

struct Ran {
  int status = -1;
  std::string out;
  std::string err;
};

class CommandTest : public testing::Test {
 protected:
  void SetUp() override {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    m_folder = fs::path(testing::TempDir()) /
               (std::string("pxd_") + test->test_suite_name() + "_" + test->name());
    fs::remove_all(m_folder);
    fs::create_directory(m_folder);
  }
  void TearDown() override { fs::remove_all(m_folder); }

  // Runs pxd in the test's folder. The arguments are a shell's: quote what has blanks.
  Ran Run(const std::string& arguments) {
    const int status = RunPxd(m_folder, arguments);
    return {status, ReadFile(m_folder / ".out"), ReadFile(m_folder / ".err")};
  }

  // Whether the system lets this user make links, and now has one.
  [[nodiscard]] bool MakeLink(const std::string& name, const std::string& target) const {
    std::error_code error;
    fs::create_symlink(target, m_folder / name, error);
    return !error;
  }

  void Write(const std::string& name, const std::string& text) {
    std::ofstream(m_folder / name, std::ios::binary) << text;
  }
  [[nodiscard]] std::string Contents(const std::string& name) const {
    return ReadFile(m_folder / name);
  }
  // The names in the folder, but for what Run leaves there.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_folder)) {
      if (const std::string name = entry.path().filename().string(); name[0] != '.') {
        names.push_back(name);
      }
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  fs::path m_folder;
};

}  // namespace pxd_test

#endif
