#include "settings/SettingsRecord.h"

namespace kelmoran {

SettingsRecord Settings;
int32_t TZ_Bias = 0;

}  // namespace kelmoran
