#pragma once
// The kinds of file the program opens, by the ending of their names.
#include <filesystem>

namespace synthara::shell {

// A project (.syn) or template (.syt), whatever the case of the ending.
bool IsProjectFile(const std::filesystem::path& path);
// A template (.syt).
bool IsTemplateFile(const std::filesystem::path& path);

}  // namespace synthara::shell
