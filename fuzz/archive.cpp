#include "archive/unitfile.h"
#include "fuzzing.h"
#include "model/differences.h"

// Qt's parser leaks an object whose member comes twice.
extern "C" const char *__lsan_default_suppressions() { return "leak:libQt5Core"; }

// The reader of unit files: what it takes is written and read alike for ever after, and can be described and taken
// over.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    static const UnitContent empty;
    UnitPart part;
    try {
        part = archive::fromJson(json, empty);
    } catch (const archive::Error &) {
        return 0;
    }
    const UnitPart again = archive::fromJson(archive::toJson(part, QDateTime::currentDateTimeUtc()), empty);
    require(again == part, "what was written is read as it was");

    // Makes the part empty, value by value.
    for (const Difference &difference : differences(part.content, empty, part.records))
        apply(difference, part.content, empty);
    require(differences(part.content, empty, part.records).empty(), "nothing differs once all is taken over");
    return 0;
}
