// SPDX-License-Identifier: MIT
#include "embedded/OleField.h"
#include "embedded/cfb/Stream.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace vellumo;

// All that can be read of a stream, in pieces of odd length.
std::vector<std::byte> readPieces(cfb::Stream& stream)
{
    std::vector<std::byte> content;
    std::byte buffer[113];
    while (!stream.eof()) {
        const auto count = stream.read(buffer);
        if (count == 0) std::abort();
        content.insert(content.end(), buffer, buffer + count);
    }
    if (content.size() > stream.size() || (stream.fail() && !content.empty())) std::abort();
    return content;
}

// The last bytes once more, one by one.
void rereadEnd(cfb::Stream& stream, const std::vector<std::byte>& content)
{
    auto position = content.size() - std::min<std::size_t>(content.size(), 200);
    stream.seek(position);
    for (; position < content.size(); ++position)
        if (stream.getch() != std::to_integer<int>(content[position])) std::abort();
    if (stream.getch() != -1) std::abort();
}

// A stream is extracted whole or not at all.
void extract(Bytes file, const cfb::Storage& storage, const char* path)
{
    cfb::Stream stream(storage, path);
    const auto content = readPieces(stream);
    std::vector<std::byte> out;
    const auto status = extractOleStream(file, path, out);
    if ((status == 1) != (storage.result() != cfb::StorageResult::Opened)) std::abort();
    if ((status == 0) != (!stream.fail() && content.size() == stream.size())) std::abort();
    if (out != (status == 0 ? content : std::vector<std::byte>())) std::abort();
}

} // namespace

// One input is one compound file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = std::as_bytes(std::span(data, size));
    cfb::Storage storage(file);
    storage.open();
    extract(file, storage, "Package");
    for (const auto* path : {"Contents", "EmbeddedOdf", "Folder/Inner", "Folder", ""}) {
        cfb::Stream stream(storage, path);
        rereadEnd(stream, readPieces(stream));
    }
    return 0;
}
