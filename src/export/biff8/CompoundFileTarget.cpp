// SPDX-License-Identifier: MIT
#include "export/biff8/CompoundFileTarget.h"

#include "export/files/GObjectRef.h"
#include "export/files/Replacement.h"

#include <cerrno>
#include <gsf/gsf.h>

namespace vellumo::biff8 {

namespace {

// What readers recognise an Excel workbook by.
constexpr guint8 workbookClassId[16] = {
    0x20, 0x08, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};

} // namespace

// The file, the storage in it, the stream in that. Closing the storage closes the file.
struct CompoundFileTarget::Outputs {
    std::unique_ptr<Replacement> replacement;
    GObjectRef<GsfOutput> file;
    GObjectRef<GsfOutfile> storage;
    GObjectRef<GsfOutput> stream;

    // The library keeps an error of the file (a full disk, for example) to itself until it is asked.
    [[nodiscard]] bool isSound() const { return gsf_output_error(file.get()) == nullptr; }

    bool close()
    {
        // The stream first: the storage takes its size from it.
        const bool isStreamClosed = gsf_output_close(stream.get());
        return gsf_output_close(GSF_OUTPUT(storage.get())) && isStreamClosed;
    }
};

CompoundFileTarget::CompoundFileTarget(std::unique_ptr<Outputs> outputs, const std::atomic<bool>* stop)
    : m_outputs(std::move(outputs))
    , m_stop(stop)
{
}

std::unique_ptr<CompoundFileTarget> CompoundFileTarget::create(const std::string& path, const std::atomic<bool>* stop)
{
    gsf_init();
    auto outputs = std::make_unique<Outputs>();
    outputs->replacement = Replacement::create(path);
    if (!outputs->replacement) return nullptr;
    auto* const stream = outputs->replacement->takeStream();
    if (stream == nullptr) return nullptr;
    outputs->file.reset(gsf_output_stdio_new_FILE(outputs->replacement->part().c_str(), stream, FALSE));
    outputs->storage.reset(gsf_outfile_msole_new(outputs->file.get()));
    gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(outputs->storage.get()), workbookClassId);
    outputs->stream.reset(gsf_outfile_new_child(outputs->storage.get(), "Workbook", FALSE));
    return std::unique_ptr<CompoundFileTarget>(new CompoundFileTarget(std::move(outputs), stop));
}

CompoundFileTarget::~CompoundFileTarget()
{
    if (m_outputs) m_outputs->close();
}

bool CompoundFileTarget::noted(bool isDone)
{
    if (!isDone && m_error == 0) m_error = errno;
    return isDone;
}

bool CompoundFileTarget::write(std::string_view bytes)
{
    if (m_stop != nullptr && *m_stop) return false;
    const auto* raw = reinterpret_cast<const guint8*>(bytes.data());
    errno = 0;
    return noted(gsf_output_write(m_outputs->stream.get(), bytes.size(), raw) && m_outputs->isSound());
}

bool CompoundFileTarget::overwrite(std::uint32_t offset, std::string_view bytes)
{
    auto* stream = m_outputs->stream.get();
    const auto end = gsf_output_tell(stream);
    return gsf_output_seek(stream, offset, G_SEEK_SET) && write(bytes) && gsf_output_seek(stream, end, G_SEEK_SET);
}

bool CompoundFileTarget::finish()
{
    if (!m_outputs->isSound() || (m_stop != nullptr && *m_stop)) return false;
    const auto outputs = std::move(m_outputs);
    errno = 0;
    return noted(outputs->close() && outputs->isSound() && outputs->replacement->finish());
}

} // namespace vellumo::biff8
