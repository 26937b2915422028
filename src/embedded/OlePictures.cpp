// SPDX-License-Identifier: MIT
#include "embedded/OlePictures.h"

#include "embedded/ContentType.h"
#include "embedded/OleField.h"

namespace vellumo {

namespace {

// What is looked for in an object, told by its class or its format.
enum class Wanted { PaintedBitmap, Picture, Pdf, OnlyWholeBitmap };

Wanted wantedOf(const OleObject& object)
{
    const auto name = object.className;
    if (name.starts_with("AcroExch.Document") || name.starts_with("Acrobat.Document")) return Wanted::Pdf;
    if (name.starts_with("Paint.Picture") || name == "PBrush") return Wanted::PaintedBitmap;
    const auto isStatic = object.format == OleFormat::Static || name == "StaticDib" || name == "StaticMetafile"
        || name == "DIB" || name == "METAFILEPICT";
    return isStatic ? Wanted::Picture : Wanted::OnlyWholeBitmap;
}

OleFile bitmapFrom(Bytes bytes)
{
    if (isBitmapFile(bytes)) return {{{bytes.begin(), bytes.end()}}, "bmp"};
    auto file = bitmapFileFrom(bytes);
    return file ? OleFile{std::move(*file), "bmp"} : OleFile{};
}

OleFile pictureFrom(Bytes bytes)
{
    if (auto file = metafileFrom(bytes)) return {std::move(*file), "wmf"};
    if (isBareMetafile(bytes)) return {{{bytes.begin(), bytes.end()}}, "wmf"};
    return bitmapFrom(bytes);
}

//   0 i32 -1 or -2, 4 u32 clipboard format, 8 u32 size of the device's description and itself, then 24 bytes,
//   u32 size of the data, data. Any other first field stands for a format with a name, none of which is a bitmap.
Bytes bitmapOfPresentationStream(Bytes stream)
{
    constexpr std::uint32_t bitmapFormat = 8;
    if (stream.size() < 12 || i32At(stream, 0) > -1 || i32At(stream, 0) < -2 || u32At(stream, 4) != bitmapFormat)
        return {};
    constexpr std::size_t fixedPart = 28;
    const std::size_t deviceSize = u32At(stream, 8);
    const auto rest = stream.subspan(8);
    if (deviceSize > rest.size() || rest.size() - deviceSize < fixedPart) return {};
    const std::size_t size = u32At(rest, deviceSize + fixedPart - 4);
    const auto data = rest.subspan(deviceSize + fixedPart);
    return size <= data.size() ? data.first(size) : Bytes();
}

// The bytes of a stream that OLE 2 keeps the native data of OLE 1 in: a size in front.
Bytes withoutSize(Bytes stream) { return stream.size() < 4 ? Bytes() : stream.subspan(4); }

OleFile bitmapInside(Bytes compoundFile)
{
    std::vector<std::byte> stream;
    OleFile found;
    if (extractOleStream(compoundFile, "Ole10Native", stream) == 0) found = bitmapFrom(withoutSize(stream));
    for (const auto* name : {"CONTENTS", "Contents"})
        if (found.file.bytes.empty() && extractOleStream(compoundFile, name, stream) == 0) found = bitmapFrom(stream);
    if (found.file.bytes.empty() && extractOleStream(compoundFile, "OlePres000", stream) == 0)
        found = bitmapFrom(bitmapOfPresentationStream(stream));
    return found;
}

OleFile pdfFrom(Bytes native)
{
    const auto isPdf = [](Bytes bytes) { return contentTypeOf(bytes).extension == "pdf"; };
    if (isPdf(native)) return {{{native.begin(), native.end()}}, "pdf"};
    // Programs nest it at times, and differ in how they write the name.
    auto stream = findOleStream(native, "contents", isPdf);
    return stream.empty() ? OleFile{} : OleFile{{std::move(stream)}, "pdf"};
}

OleFile paintedBitmapFrom(const OleObject& object)
{
    auto found = bitmapFrom(object.native);
    if (found.file.bytes.empty() && isOleStream(object.native)) found = bitmapInside(object.native);
    return found;
}

OleFile staticPictureFrom(const OleObject& object)
{
    auto found = pictureFrom(object.native);
    if (found.file.bytes.empty()) found = bitmapInside(object.native);
    return found.file.bytes.empty() ? presentationFileFrom(object.presentation) : std::move(found);
}

} // namespace

OleFile oleFileFrom(const OleObject& object)
{
    switch (wantedOf(object)) {
    case Wanted::Pdf: return pdfFrom(object.native);
    case Wanted::PaintedBitmap: return paintedBitmapFrom(object);
    case Wanted::Picture: return staticPictureFrom(object);
    case Wanted::OnlyWholeBitmap: break;
    }
    // The class does not say that it is a bitmap, so nothing may be missing of one.
    auto file = bitmapFileFrom(object.native);
    return file && !file->isCut ? OleFile{std::move(*file), "bmp"} : OleFile{};
}

OleFile presentationFileFrom(Bytes presentation)
{
    const auto picture = olePresentationFrom(presentation);
    if (!picture) return {};
    if (picture->className == "DIB") return bitmapFrom(picture->data);
    if (picture->className == "METAFILEPICT") return pictureFrom(picture->data);
    return {};
}

} // namespace vellumo
