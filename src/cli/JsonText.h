#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace vellumo {

// The object as it is printed. Every text comes out: what is not UTF-8 is replaced.
[[nodiscard]] inline std::string jsonText(const nlohmann::ordered_json& json)
{
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

} // namespace vellumo
