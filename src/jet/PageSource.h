// SPDX-License-Identifier: MIT
#pragma once

#include "jet/OpenFailure.h"
#include "jet/OpenOptions.h"
#include "jet/PageCipher.h"
#include "jet/Pages.h"

#include <memory>
#include <string>

namespace vellumo::jet {

// The pages of a database file, by way of libmdb, which knows the header and the keys. Whatever happens to the name of
// the file meanwhile, all sources made from the first one read the same file. Opened read-only.
class PageSource : public Pages {
public:
    // Null, with the reason in `failure`, when the file cannot be opened or is not of a format that is read. Takes the
    // library's environment variables out of the environment at the first call, which should therefore come before
    // other threads use it.
    [[nodiscard]] static std::unique_ptr<PageSource> open(
        const std::string& path, const OpenOptions& options, OpenFailure& failure);
    // The same file for another thread. Null when the library cannot make another handle.
    [[nodiscard]] std::unique_ptr<PageSource> another() const;
    ~PageSource() override;

    // 0: Access 97 (Jet 3), 1: Access 2000 to 2003 (Jet 4), 2 to 6: Access 2007 and later (ACE).
    [[nodiscard]] int formatVersion() const;
    // Windows code page as the file states it; the texts of a Jet 3 file are in it.
    [[nodiscard]] int codePage() const;
    [[nodiscard]] bool isEncrypted() const;       // by a key of its own
    [[nodiscard]] bool hasIdlePassword() const;   // one that encrypts nothing: see hasDatabasePassword
    [[nodiscard]] std::uint64_t fileSize() const; // bytes
    // Whether the file ends inside a page, or has another size or another time of change than when it was opened.
    [[nodiscard]] bool isCutOrChanged() const;

protected:
    [[nodiscard]] bool readPage(std::uint32_t number, std::uint8_t* to) override;

private:
    struct File;
    struct Handle;
    PageSource(std::shared_ptr<const File> file, std::unique_ptr<Handle> handle, std::unique_ptr<PageCipher> cipher);

    std::shared_ptr<const File> m_file;
    std::unique_ptr<Handle> m_handle;
    std::unique_ptr<PageCipher> m_cipher; // null: the pages are not encrypted, or by a key that the library knows
};

} // namespace vellumo::jet
