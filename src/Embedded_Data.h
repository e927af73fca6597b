// The data tables built into the program (generated under data/ by the tools/ generators).
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace kelmoran {

// The bytes of the built-in table of that name, or an empty span if there is none.
std::span<const unsigned char> Embedded_Data(std::string_view name);

}  // namespace kelmoran
