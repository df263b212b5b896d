#include "simulator/fieldencoder.h"

void FieldEncoder::text(char descriptor, std::string_view value)
{
    static constexpr std::array separators{control::gs, control::rs, control::us};
    if (level_ == 0 || !text_.empty()) text_ += separators[level_];
    text_.append(1, descriptor).append(value);
}
