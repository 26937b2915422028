// SPDX-License-Identifier: MIT
#include "embedded/CompoundFileWriter.h"

#include "samples/CompoundFile.h"

namespace vellumo::testing {

namespace {

std::uint32_t u32At(const Buffer& buffer, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= std::to_integer<std::uint32_t>(buffer.at(offset + i)) << 8 * i;
    return value;
}

} // namespace

void putU16(Buffer& buffer, std::size_t offset, unsigned value)
{
    buffer[offset] = static_cast<std::byte>(value);
    buffer[offset + 1] = static_cast<std::byte>(value >> 8U);
}

void putU32(Buffer& buffer, std::size_t offset, std::uint32_t value)
{
    putU16(buffer, offset, value);
    putU16(buffer, offset + 2, value >> 16U);
}

void addU16(Buffer& buffer, unsigned value)
{
    buffer.resize(buffer.size() + 2);
    putU16(buffer, buffer.size() - 2, value);
}

void addU32(Buffer& buffer, std::uint32_t value)
{
    buffer.resize(buffer.size() + 4);
    putU32(buffer, buffer.size() - 4, value);
}

Change set8(std::size_t offset, unsigned value)
{
    return [=](Buffer& buffer) { buffer[offset] = static_cast<std::byte>(value); };
}

Change set16(std::size_t offset, unsigned value)
{
    return [=](Buffer& buffer) { putU16(buffer, offset, value); };
}

Change set32(std::size_t offset, std::uint32_t value)
{
    return [=](Buffer& buffer) { putU32(buffer, offset, value); };
}

Change resizeTo(std::size_t size)
{
    return [=](Buffer& buffer) { buffer.resize(size); };
}

Change both(const Change& first, const Change& second)
{
    return [=](Buffer& buffer) { first(buffer), second(buffer); };
}

std::size_t CompoundFile::tableBlockCount() const { return u32At(bytes, 44); }

std::uint32_t CompoundFile::tableBlock(std::size_t index) const { return u32At(bytes, 76 + 4 * index); }

std::uint32_t CompoundFile::directoryBlock() const { return u32At(bytes, 48); }

std::uint32_t CompoundFile::firstExtensionBlock() const { return u32At(bytes, 68); }

std::uint32_t CompoundFile::firstBlockOf(std::size_t entry) const { return u32At(bytes, offsetOfEntry(entry) + 116); }

std::size_t CompoundFile::offsetOfBlock(std::size_t block) const { return (block + 1) << bigShift; }

std::size_t CompoundFile::offsetOfLink(std::size_t block) const
{
    const auto perBlock = std::size_t{1} << (bigShift - 2);
    return offsetOfBlock(tableBlock(block / perBlock)) + 4 * (block % perBlock);
}

std::size_t CompoundFile::offsetOfSmallLink(std::size_t block) const
{
    return offsetOfBlock(u32At(bytes, 60)) + 4 * block;
}

std::size_t CompoundFile::offsetOfEntry(std::size_t entry) const
{
    return offsetOfBlock(directoryBlock()) + 128 * entry;
}

CompoundFile writeCompoundFile(const CompoundFileContent& content)
{
    std::vector<samples::CompoundStream> streams;
    for (const auto& [path, data] : content.streams) {
        const auto* first = reinterpret_cast<const std::uint8_t*>(data.data());
        streams.push_back({path, {first, first + data.size()}});
    }
    const auto file =
        samples::compoundFile(streams, static_cast<int>(content.bigShift), static_cast<int>(content.smallShift));
    const auto* first = reinterpret_cast<const std::byte*>(file.data());
    return {{first, first + file.size()}, content.bigShift};
}

} // namespace vellumo::testing
