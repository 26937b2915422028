// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Alerts.h"
#include "platform/Defaults.h"
#include "platform/FilePanels.h"
#include "platform/SystemLog.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// Stand-ins for the desktop that keep what they were told.
namespace vellumo::test {

class FakeAlerts : public Alerts {
public:
    void show(const Alert& alert) override
    {
        shown.push_back(alert);
        whileShown();
    }
    void ask(const Alert& alert, const std::vector<std::string>& choices,
        const std::function<void(std::size_t)>& chosen) override
    {
        show(alert);
        asked = choices;
        const auto choice = std::exchange(answer, std::nullopt);
        if (choice) chosen(*choice);
    }
    void beep() override { ++beeps; }

    std::vector<Alert> shown;
    std::vector<std::string> asked;           // the choices of the last question
    std::optional<std::size_t> answer;        // what the user chooses next
    std::function<void()> whileShown = [] {}; // looks at what stands behind the alert
    int beeps = 0;
};

class FakeDefaults : public Defaults {
public:
    std::optional<std::string> string(std::string_view key) const override
    {
        const auto found = strings.find(key);
        return found == strings.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<bool> boolean(std::string_view key) const override
    {
        const auto found = booleans.find(key);
        return found == booleans.end() ? std::nullopt : std::optional(found->second);
    }
    void setString(std::string_view key, std::string_view value) override { strings[std::string(key)] = value; }
    void setBoolean(std::string_view key, bool value) override { booleans[std::string(key)] = value; }
    bool synchronize() override
    {
        ++synchronizeCount;
        return canSynchronize;
    }

    std::map<std::string, std::string, std::less<>> strings;
    std::map<std::string, bool, std::less<>> booleans;
    int synchronizeCount = 0;
    bool canSynchronize = true;
};

// Answers every question with the same answers; notes what was asked.
class FakeFilePanels : public FilePanels {
public:
    std::optional<std::vector<std::string>> openFiles(
        const std::vector<std::string>&, const std::string& startFolder) override
    {
        asked.push_back("open " + startFolder);
        return files;
    }
    std::optional<std::string> chooseFolder(const std::string& initial) override
    {
        asked.push_back("folder " + initial);
        return folder;
    }
    std::optional<std::string> saveFile(const std::string& extension, const std::string& suggestedName) override
    {
        asked.push_back("save " + extension + " " + suggestedName);
        return file;
    }

    std::optional<std::vector<std::string>> files;
    std::optional<std::string> folder;
    std::optional<std::string> file;
    std::vector<std::string> asked;
};

class FakeSystemLog : public SystemLog {
public:
    void log(std::string_view line) override { lines.emplace_back(line); }
    std::vector<std::string> lines;
};

} // namespace vellumo::test
