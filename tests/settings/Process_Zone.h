// The IANA zone that the settings suite set as the computer's own for its run.
#pragma once

#include <string>

namespace kelmoran {
extern std::string Process_Zone;
}
