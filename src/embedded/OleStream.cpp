#include "embedded/OleStream.h"

#include "embedded/cfb/Stream.h"

namespace vellumo {

bool isOleStream(Bytes bytes) { return cfb::hasSignature(bytes); }

int extractOleStream(Bytes file, std::string_view name, std::vector<std::byte>& out)
{
    cfb::Storage storage(file);
    storage.open();
    if (storage.result() != cfb::StorageResult::Opened) return 1;
    cfb::Stream stream(storage, name);
    // No block is in a chain twice, so a whole stream is never longer than the file.
    if (stream.fail() || stream.size() > file.size()) return 2;
    std::vector<std::byte> content(stream.size());
    if (stream.read(content) < content.size()) return 2;
    out = std::move(content);
    return 0;
}

} // namespace vellumo
