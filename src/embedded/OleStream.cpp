#include "embedded/OleStream.h"

#include "embedded/Limits.h"
#include "embedded/cfb/Stream.h"
#include "text/Ascii.h"

namespace vellumo {

namespace {

bool readWhole(cfb::Stream stream, Bytes file, std::vector<std::byte>& out)
{
    // No block is in a chain twice, so a whole stream is never longer than the file.
    if (stream.fail() || stream.size() > file.size()) return false;
    std::vector<std::byte> content(stream.size());
    if (stream.read(content) < content.size()) return false;
    out = std::move(content);
    return true;
}

} // namespace

bool isOleStream(Bytes bytes) { return cfb::hasSignature(bytes); }

int extractOleStream(Bytes file, std::string_view name, std::vector<std::byte>& out)
{
    cfb::Storage storage(file);
    storage.open();
    if (storage.result() != cfb::StorageResult::Opened) return 1;
    return readWhole(cfb::Stream(storage, name), file, out) ? 0 : 2;
}

std::vector<std::byte> findOleStream(
    Bytes file, std::string_view lowerCaseName, const std::function<bool(Bytes)>& isWanted)
{
    cfb::Storage storage(file);
    storage.open();
    std::vector<std::byte> content;
    std::size_t left = limits::streamsOfOneName;
    for (const auto& entry : storage.directory().entries()) {
        if (!entry.isValid() || entry.isDirectory() || asciiLower(entry.name) != lowerCaseName) continue;
        if (left-- == 0) break;
        if (readWhole(cfb::Stream(storage, entry), file, content) && isWanted(content)) return content;
    }
    return {};
}

bool hasOleEntry(Bytes file, std::string_view name)
{
    cfb::Storage storage(file);
    storage.open();
    return storage.directory().entry(name) != nullptr;
}

} // namespace vellumo
