#pragma once
// The path language of the reference cases: dot-separated keys, a list
// element by index (name[3]) or by its fields (name[key=value,key2=value2]).
// A key runs to the next '.' or '[' and may hold blanks and apostrophes.
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace synthara::testing {

// The value at `path`, or nullptr when the path does not resolve; `why`
// (when given) then says where it stopped.
const nlohmann::json* ResolvePath(const nlohmann::json& root, std::string_view path,
                                  std::string* why = nullptr);

}  // namespace synthara::testing
