#include "unit/fieldencoder.h"

void FieldEncoder::text(char descriptor, std::string_view value)
{
    static constexpr std::array separators{control::gs, control::rs, control::us};
    if (depth == 0 || !encoded.empty()) encoded += separators[depth];
    encoded.append(1, descriptor).append(value);
}
