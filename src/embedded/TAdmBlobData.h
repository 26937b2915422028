// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo {

class ImageDecoder;
class Workspace;
struct ContentType;
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
    std::string
        storedName{}; // name of the file that was embedded, UTF-8, without folders and control characters; or ""
    std::string linkTarget{}; // path that a linked object points to, UTF-8, as stored; or ""
};

// The content of one object cell after its wrappers were taken off: the bytes of the embedded file and the extension
// that tells what they are. Immutable but for what is found out or made when first asked for: the picture, what the
// content is, and the temporary file. Main thread only, but for construction and what is `const`.
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

    // An attachment cell has several files: the first, which stands for the cell, and these. Empty for any other cell.
    using Files = std::vector<std::shared_ptr<TAdmBlobData>>;
    [[nodiscard]] const Files& furtherFiles() const { return m_furtherFiles; }

    // For who reads the cell, before anybody else has the object: what the file is called, its extension unless that
    // is known, and the further files of the cell.
    void setStoredName(std::string name, std::string fileExtension);
    void addFurtherFile(std::shared_ptr<TAdmBlobData> file) { m_furtherFiles.push_back(std::move(file)); }

    // The payload as a picture, decoded at the first call and kept; null when it is none.
    [[nodiscard]] std::shared_ptr<const Image> image(ImageDecoder& decoder);

    // What the grid shows: ".bmp [12 KB]", or "[12 KB]" without an extension; behind the size the state, unless whole,
    // and how many further files the cell has.
    [[nodiscard]] std::string cellDescription() const;
    // What the detail pane shows: the payload as UTF-8 text, or "[NON-TEXTUAL DATA]" (localised); of a link the path;
    // of several files a line for each, with name and size.
    [[nodiscard]] std::string description() const;
    // The same, but nothing where it is not textual.
    [[nodiscard]] std::optional<std::string> textualDescription() const;

    // The extension for a file of the payload: the stored one, unless the bytes are of another type, which then names
    // it. "" when neither tells.
    [[nodiscard]] std::string extensionByContent();
    // How the name of a file of the payload ends: ".damaged" unless that is a whole file, and then the extension, if
    // there is one.
    [[nodiscard]] std::string fileEnding(std::string_view extension) const;
    // The name for such a file: the stored one, or `otherwise` (without extension) when there is none, with that
    // ending.
    [[nodiscard]] std::string fileName(std::string_view otherwise);
    // Whether its file may be opened with the default application: it goes by an extension of the list below, and
    // neither its content nor the extension that it was stored with is one that a desktop might execute.
    [[nodiscard]] bool mayBeOpened();

    // The desktop's icon for files of this extension, 16 x 16 pixels; null when it has none.
    [[nodiscard]] std::shared_ptr<const Image> getFileIcon(Workspace& workspace) const;

    // The path of a temporary file that holds the payload, made at the first call; "" when it cannot be made (the
    // next call tries again). It has its stored name, in a folder of its own, or else a unique one.
    [[nodiscard]] std::string createTempFile();

private:
    [[nodiscard]] const ContentType& contentType();
    [[nodiscard]] std::string descriptionOfOne() const;
    [[nodiscard]] std::string listOfFiles() const;

    std::vector<std::byte> m_data;
    std::string m_fileExtension;
    ObjectFacts m_facts;
    Files m_furtherFiles;
    std::shared_ptr<const Image> m_image;
    bool m_isImageDecoded = false;
    const ContentType* m_contentType = nullptr; // once it was asked for
    std::string m_tmpPath;
    std::string m_tmpFolder; // made for it, or ""
};

// Whether files with this extension (any case, without the dot) are of a kind that people keep and open: documents,
// databases, pictures, sound, video. What they open in may run what is in them (macros, PostScript), and it is for that
// application to ask first. Extensions that a desktop itself would execute are not among them; neither is "".
[[nodiscard]] bool isSafeFileExtension(std::string_view extension);

} // namespace vellumo
