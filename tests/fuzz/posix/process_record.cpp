#include "fuzz/reader.h"
#include "platform/posix/process_records.h"

// What the system tells of a process, whose name is whatever the process likes.

namespace Fuzz
{
namespace
{

bool readRecord(ByteView input)
{
    const std::string text = textOfBytes(input);
    const auto record = Platform::parseProcessRecord(text);
    if (!record)
        return false;
    expect(record->name.size() + 2 <= text.size(), "a name stood in brackets");
    expect(text.find('(' + record->name + ')') != std::string::npos, "a name is told as it is");
    const std::string renamed = std::to_string(record->id) + " (a) b) (c)" + text.substr(text.rfind(')') + 1);
    const auto other = Platform::parseProcessRecord(renamed);
    expect(other && other->parent == record->parent && other->started == record->started &&
               other->hasEnded == record->hasEnded && other->name == "a) b) (c",
           "a name changes nothing else");
    return true;
}

std::vector<Bytes> recordSeeds()
{
    const std::string rest = " 1 4 4 0 -1 4194560 1 2 3 4 5 6 7 8 20 0 1 0 12345 1 2\n";
    return {bytesOfText("42 (name) S" + rest), bytesOfText("42 (a) Z 9 (b) Z" + rest), bytesOfText("1 (" + rest)};
}

const Registered registered({"process_record", readRecord, recordSeeds});

} // namespace
} // namespace Fuzz
