// SPDX-License-Identifier: MIT
#include "samples/Canvas.h"
#include "samples/CompoundFile.h"
#include "samples/ZipFile.h"

#include <gsf/gsf.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace vellumo::samples {
namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
using Input = std::unique_ptr<GsfInput, Unref>;

// A stream of a compound file as libgsf reads it; "(missing)" when it does not.
std::string streamOf(const Bytes& file, const std::vector<const char*>& path)
{
    gsf_init();
    const Input memory(gsf_input_memory_new(file.data(), static_cast<gsf_off_t>(file.size()), FALSE));
    Input current(GSF_INPUT(gsf_infile_msole_new(memory.get(), nullptr)));
    for (const auto* const name : path) {
        if (current == nullptr || !GSF_IS_INFILE(current.get())) return "(missing)";
        current.reset(gsf_infile_child_by_name(GSF_INFILE(current.get()), name));
    }
    if (current == nullptr) return "(missing)";
    std::string bytes(static_cast<std::size_t>(gsf_input_size(current.get())), '\0');
    if (gsf_input_read(current.get(), bytes.size(), reinterpret_cast<guint8*>(bytes.data())) == nullptr
        && !bytes.empty())
        return "(unreadable)";
    return bytes;
}

Bytes pattern(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 31 + i / 4096);
    return bytes;
}

std::string textOf(ByteSpan bytes) { return {bytes.begin(), bytes.end()}; }

TEST(CompoundFile, IsReadByAnotherLibrary)
{
    for (const int shift : {9, 12}) {
        SCOPED_TRACE(shift);
        const auto file = compoundFile(
            {
                {"Contents", pattern(100)},
                {"Empty", {}},
                {"Last small", pattern(4095)},
                {"First big", pattern(4096)},
                {"Big", pattern(100'000)},
                {"Storage/Inner/Deep", pattern(70)},
                {"Storage/Other", pattern(5000)},
                {"\1CompObj", pattern(10)},
            },
            shift);
        EXPECT_EQ(streamOf(file, {"Contents"}), textOf(pattern(100)));
        EXPECT_EQ(streamOf(file, {"Empty"}), "");
        EXPECT_EQ(streamOf(file, {"Last small"}), textOf(pattern(4095)));
        EXPECT_EQ(streamOf(file, {"First big"}), textOf(pattern(4096)));
        EXPECT_EQ(streamOf(file, {"Big"}), textOf(pattern(100'000)));
        EXPECT_EQ(streamOf(file, {"Storage", "Inner", "Deep"}), textOf(pattern(70)));
        EXPECT_EQ(streamOf(file, {"Storage", "Other"}), textOf(pattern(5000)));
        EXPECT_EQ(streamOf(file, {"\1CompObj"}), textOf(pattern(10)));
        EXPECT_EQ(streamOf(file, {"Absent"}), "(missing)");
    }
}

// 109 table blocks of 128 entries name 13,952 blocks; this needs 111 of them.
TEST(CompoundFile, HasAnExtensionTableWhenLarge)
{
    const auto file = compoundFile({{"Package", pattern(14'100 * std::size_t{512})}});
    EXPECT_EQ(file[44], 112) << "allocation table blocks";
    EXPECT_EQ(file[72], 1) << "extension blocks";
    EXPECT_EQ(streamOf(file, {"Package"}), textOf(pattern(14'100 * std::size_t{512})));
}

TEST(Canvas, EncodesPictures)
{
    using namespace std::string_literals;
    Canvas canvas(3, 2, Paint({255, 0, 0}));
    canvas.rectangle({0, 1, 3, 1}, Paint({0, 0, 255}));
    const auto bmp = textOf(encodeBmp(canvas));
    EXPECT_EQ(bmp.substr(0, 6), "BM\x4E\0\0\0"s) << "54 bytes of header, two rows of 12";
    EXPECT_EQ(bmp.substr(54), "\xFF\0\0\xFF\0\0\xFF\0\0\0\0\0\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0"s) << "last row first";
    const auto png = textOf(encodePng(canvas));
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(png.substr(8, 21), "\0\0\0\rIHDR\0\0\0\3\0\0\0\2\x08\2\0\0\0"s);
    EXPECT_EQ(png.substr(png.size() - 12), "\0\0\0\0IEND\xAE\x42\x60\x82"s);
}

TEST(ZipFile, StoresEntriesAndListsThem)
{
    using namespace std::string_literals;
    const auto zip = textOf(zipFile({{"a", "123456789"}, {"b/c", ""}}));
    // The check sum of "123456789" is the one that tells CRC-32 from its relatives.
    EXPECT_EQ(zip.substr(0, 40),
        "PK\3\4\x14\0\0\0\0\0\0\0\x21\0\x26\x39\xF4\xCB\x09\0\0\0\x09\0\0\0\1\0\0\0"
        "a123456789"s);
    EXPECT_EQ(zip.substr(zip.size() - 22), "PK\5\6\0\0\0\0\2\0\2\0\x60\0\0\0\x49\0\0\0\0\0"s);
}

} // namespace
} // namespace vellumo::samples
