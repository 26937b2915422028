// SPDX-License-Identifier: MIT
#include "embedded/InflateRaw.h"

#include <limits>
#include <zlib.h>

namespace vellumo {

namespace {

constexpr int rawWindowBits = -15;

int finalStatus(int status, const z_stream& stream)
{
    if (status == Z_STREAM_END) return Z_OK;
    if (status == Z_NEED_DICT) return Z_DATA_ERROR;
    if (status == Z_BUF_ERROR && stream.avail_in == 0) return Z_DATA_ERROR;
    return status;
}

} // namespace

int inflateRaw(std::span<std::byte>& destination, Bytes source)
{
    auto written = destination;
    const auto status = inflateRawAsFarAsItGoes(written, source);
    if (status == Z_OK) destination = written;
    return status;
}

int inflateRawAsFarAsItGoes(std::span<std::byte>& destination, Bytes source)
{
    constexpr auto limit = std::numeric_limits<uInt>::max();
    auto room = destination;
    destination = room.first(0);
    if (room.size() > limit || source.size() > limit) return Z_BUF_ERROR;

    z_stream stream{};
    // zlib does not write to its input, it only lacks the const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(source.data()));
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(room.data());
    stream.avail_out = static_cast<uInt>(room.size());
    if (const auto status = inflateInit2(&stream, rawWindowBits); status != Z_OK) return status;
    const auto status = finalStatus(inflate(&stream, Z_FINISH), stream);
    inflateEnd(&stream);
    destination = room.first(stream.total_out);
    return status;
}

} // namespace vellumo
