#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

class ImageDecoder;
class Workspace;
struct Image;

// How much of an object there is.
enum class ObjectState {
    Whole,
    Damaged, // the stored value breaks off or cannot be unpacked: the bytes are not those of a whole file
    Linked,  // the file itself is elsewhere, at linkTarget()
};

// What an object cell tells beside the bytes.
struct ObjectFacts {
    ObjectState state = ObjectState::Whole;
    std::string storedName{}; // name of the file that was embedded, UTF-8, without folders and control characters; or ""
    std::string linkTarget{}; // path that a linked object points to, UTF-8, as stored; or ""
};

// The content of one object cell after its wrappers were taken off: the bytes of the embedded file and the extension
// that tells what they are. Immutable but for the picture and the temporary file, both made when first asked for.
// Main thread only, but for construction and `data`.
class TAdmBlobData {
public:
    // `fileExtension` without the dot, "" when unknown; one that is no UTF-8 counts as unknown. Takes the bytes over.
    TAdmBlobData(std::vector<std::byte> data, std::string fileExtension, ObjectFacts facts = {});
    // Removes the temporary file, if one was made.
    ~TAdmBlobData();
    TAdmBlobData(const TAdmBlobData&) = delete;
    TAdmBlobData& operator=(const TAdmBlobData&) = delete;

    [[nodiscard]] std::span<const std::byte> data() const { return m_data; }
    [[nodiscard]] const std::string& fileExtension() const { return m_fileExtension; }

    [[nodiscard]] ObjectState state() const { return m_facts.state; }
    [[nodiscard]] const std::string& storedName() const { return m_facts.storedName; }
    [[nodiscard]] const std::string& linkTarget() const { return m_facts.linkTarget; }

    // The payload as a picture, decoded at the first call and kept; null when it is none.
    [[nodiscard]] std::shared_ptr<const Image> image(ImageDecoder& decoder);

    // What the grid shows: ".bmp [12 KB]", or "[12 KB]" without an extension.
    [[nodiscard]] std::string cellDescription() const;
    // What the detail pane shows: the payload as UTF-8 text, or "[NON-TEXTUAL DATA]" (localised).
    [[nodiscard]] std::string description() const;

    // The desktop's icon for files of this extension, 16 x 16 pixels; null when it has none.
    [[nodiscard]] std::shared_ptr<const Image> getFileIcon(Workspace& workspace) const;

    // The path of a temporary file that holds the payload, made at the first call; "" when it cannot be made (the
    // next call tries again).
    [[nodiscard]] std::string createTempFile();

private:
    std::vector<std::byte> m_data;
    std::string m_fileExtension;
    ObjectFacts m_facts;
    std::shared_ptr<const Image> m_image;
    bool m_isImageDecoded = false;
    std::string m_tmpPath;
};

// Whether files with this extension (any case, without the dot) may be opened in their default application at a double
// click. False for an empty one.
[[nodiscard]] bool isSafeFileExtension(std::string_view extension);

} // namespace vellumo
