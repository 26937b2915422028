#include "embedded/OleStream.h"
#include "embedded/cfb/Stream.h"

#include <cstdlib>

namespace {

using namespace vellumo;

// Reads a stream in pieces of odd length and once more byte by byte; both ways must tell the same.
void readBothWays(const cfb::Storage& storage, const char* path)
{
    cfb::Stream stream(storage, path);
    std::vector<std::byte> pieces;
    std::byte buffer[113];
    while (!stream.eof()) {
        const auto count = stream.read(buffer);
        if (count == 0) std::abort();
        pieces.insert(pieces.end(), buffer, buffer + count);
    }
    if (pieces.size() > stream.size() || (stream.fail() && !pieces.empty())) std::abort();

    stream.seek(0);
    for (const auto byte : pieces)
        if (stream.getch() != std::to_integer<int>(byte)) std::abort();
    if (stream.getch() != -1) std::abort();
}

} // namespace

// One input is one compound file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = std::as_bytes(std::span(data, size));
    cfb::Storage storage(file);
    storage.open();
    for (const auto* path : {"Contents", "Package", "EmbeddedOdf", "Folder/Inner", "Folder", "Root Entry", ""}) {
        readBothWays(storage, path);
        std::vector<std::byte> out;
        const auto status = extractOleStream(file, path, out);
        if ((status == 1) != (storage.result() != cfb::StorageResult::Opened)) std::abort();
        if (status != 0 && !out.empty()) std::abort();
    }
    return 0;
}
