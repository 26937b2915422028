// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FileFacts.h"
#include "platform/ImageDecoder.h"
#include "platform/RecentDocuments.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

// More stand-ins for the desktop: what only the browser asks of it.
namespace vellumo::test {

class FakeRecentDocuments : public RecentDocuments {
public:
    std::vector<std::string> paths() const override { return listed; }
    void note(const std::string& path) override
    {
        if (!keepsDocuments) return;
        std::erase(listed, path);
        listed.insert(listed.begin(), path);
    }
    void clear() override { listed.clear(); }

    std::vector<std::string> listed;
    bool keepsDocuments = true; // false: the user has switched the list off
};

class FakeWorkspace : public Workspace {
public:
    void openFile(const std::string& path) override { opened.push_back(path); }
    void revealFile(const std::string& path) override { revealed.push_back(path); }
    std::shared_ptr<const Image> fileTypeIcon(const std::string&) override { return nullptr; }

    std::vector<std::string> opened;
    std::vector<std::string> revealed;
};

class FakePasteboard : public Pasteboard {
public:
    void setText(const std::string& text) override { texts.push_back(text); }
    std::vector<std::string> texts;
};

// Takes bytes that start with "IMAGE" for a picture.
class FakeImageDecoder : public ImageDecoder {
public:
    std::shared_ptr<const Image> decode(std::span<const std::byte> bytes) override
    {
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return text.starts_with("IMAGE") ? std::make_shared<const Image>() : nullptr;
    }
};

// Files without an entry cannot be looked at.
class FakeFileFacts : public FileFactsSource {
public:
    std::optional<FileFacts> facts(const std::string& path) const override
    {
        const auto found = byPath.find(path);
        return found == byPath.end() ? std::nullopt : std::optional(found->second);
    }
    std::map<std::string, FileFacts> byPath;
};

} // namespace vellumo::test
