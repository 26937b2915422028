// SPDX-License-Identifier: MIT
#include "export/xlsx/PackageFile.h"

#include "export/files/GObjectRef.h"
#include "export/files/Replacement.h"

#include <cerrno>
#include <gsf/gsf.h>
#include <map>

namespace vellumo::xlsx {

namespace {

// The sheets' XML repeats itself so much that more work makes it hardly smaller.
constexpr int deflateLevel = 1;

} // namespace

// The file, the archive in it, the folders and the member in that. Closing the archive closes the file.
struct PackageFile::Outputs {
    std::unique_ptr<Replacement> replacement;
    GObjectRef<GsfOutput> file;
    GObjectRef<GsfOutfile> archive;
    std::map<std::string, GObjectRef<GsfOutput>> folders; // by path
    GObjectRef<GsfOutput> member;
    bool hasFailed = false;

    // The library keeps an error of the file (a full disk, for example) to itself until it is asked.
    [[nodiscard]] bool isSound() const { return !hasFailed && gsf_output_error(file.get()) == nullptr; }

    void closeMember()
    {
        if (member && !gsf_output_close(member.get())) hasFailed = true;
        member.reset();
    }
    bool close()
    {
        closeMember();
        for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
            if (!gsf_output_close(folder->second.get())) hasFailed = true;
        return gsf_output_close(GSF_OUTPUT(archive.get())) && !hasFailed;
    }
    GsfOutfile* folder(const std::string& path);
};

GsfOutfile* PackageFile::Outputs::folder(const std::string& path)
{
    if (path.empty()) return archive.get();
    auto& made = folders[path];
    const auto slash = path.rfind('/');
    if (!made) {
        auto* parent = folder(slash == std::string::npos ? std::string() : path.substr(0, slash));
        made.reset(gsf_outfile_new_child(parent, path.substr(slash + 1).c_str(), TRUE));
    }
    return GSF_OUTFILE(made.get());
}

PackageFile::PackageFile(std::unique_ptr<Outputs> outputs)
    : m_outputs(std::move(outputs))
{
}

std::unique_ptr<PackageFile> PackageFile::create(const std::string& path)
{
    gsf_init();
    auto outputs = std::make_unique<Outputs>();
    outputs->replacement = Replacement::create(path);
    if (!outputs->replacement) return nullptr;
    auto* const stream = outputs->replacement->takeStream();
    if (stream == nullptr) return nullptr;
    outputs->file.reset(gsf_output_stdio_new_FILE(outputs->replacement->part().c_str(), stream, FALSE));
    outputs->archive.reset(gsf_outfile_zip_new(outputs->file.get(), nullptr));
    if (!outputs->archive) return nullptr;
    return std::unique_ptr<PackageFile>(new PackageFile(std::move(outputs)));
}

PackageFile::~PackageFile()
{
    if (m_outputs) m_outputs->close();
}

bool PackageFile::noted(bool isDone)
{
    if (!isDone && m_error == 0) m_error = errno;
    return isDone;
}

void PackageFile::beginMember(const std::string& name)
{
    auto& out = *m_outputs;
    // The library does not survive closing an archive with a member that it could not begin.
    if (!out.isSound()) return;
    errno = 0;
    out.closeMember();
    const auto slash = name.rfind('/');
    auto* folder = out.folder(slash == std::string::npos ? std::string() : name.substr(0, slash));
    out.member.reset(gsf_outfile_new_child_full(folder, name.substr(slash + 1).c_str(), FALSE, "compression-level",
        GSF_ZIP_DEFLATED, "deflate-level", deflateLevel, nullptr));
    if (!out.member) out.hasFailed = true;
    noted(out.isSound());
}

void PackageFile::write(std::string_view bytes)
{
    auto& out = *m_outputs;
    if (!out.isSound()) return;
    const auto* raw = reinterpret_cast<const guint8*>(bytes.data());
    errno = 0;
    if (!noted(gsf_output_write(out.member.get(), bytes.size(), raw) && out.isSound())) out.hasFailed = true;
}

bool PackageFile::failed() const { return !m_outputs->isSound(); }

bool PackageFile::finish()
{
    if (failed()) return false;
    const auto outputs = std::move(m_outputs);
    errno = 0;
    return noted(outputs->close() && outputs->isSound() && outputs->replacement->finish());
}

} // namespace vellumo::xlsx
