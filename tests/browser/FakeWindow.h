// SPDX-License-Identifier: MIT
#pragma once

#include "browser/MainWindowView.h"
#include "browser/OpenQuestions.h"

#include <functional>
#include <string>
#include <vector>

// Windows that keep what they were told.
namespace vellumo::test {

class FakeDataView : public DataViewPort {
public:
    void gridColumnsDidChange() override { events.emplace_back("columns"); }
    void gridRowsDidChange() override { events.emplace_back("rows"); }
    void sortIndicatorsDidChange() override { events.emplace_back("indicators"); }
    void selectedRowsDidChange() override { }
    void scrollToRow(std::size_t row) override { events.push_back("scroll " + std::to_string(row)); }
    void focusGrid() override { events.emplace_back("focus grid"); }
    void focusCell(std::size_t column, std::size_t row) override
    {
        events.push_back("focus " + std::to_string(column) + "," + std::to_string(row));
    }
    void detailDidChange() override { events.emplace_back("detail"); }
    void setTextViewShown(bool isShown) override { isTextViewShown = isShown; }
    void setJumpBarShown(bool isShown) override { isJumpBarShown = isShown; }
    void askForRow(const std::string& title, const std::string& prompt) override
    {
        events.push_back(title + " / " + prompt);
    }

    std::vector<std::string> events;
    bool isTextViewShown = false;
    bool isJumpBarShown = false;
};

class FakeChildWindow : public ChildWindowPort {
public:
    explicit FakeChildWindow(std::vector<std::string>& log)
        : m_log(log)
    {
    }
    ~FakeChildWindow() override { m_log.push_back("closed " + title); }
    DataViewPort& dataView() override { return view; }
    void setTitle(const std::string& newTitle) override { title = newTitle; }
    void setLevel(WindowLevel newLevel) override { level = newLevel; }
    void makeKey() override { m_log.push_back("key " + title); }
    void jumpBarMenuDidChange() override { }
    void jumpBarSelectionDidChange() override { }

    FakeDataView view;
    std::string title;
    WindowLevel level = WindowLevel::Normal;

private:
    std::vector<std::string>& m_log;
};

class FakeWindow : public MainWindowView {
public:
    DataViewPort& dataView() override { return data; }
    void reloadTree() override { }
    void fileWillClose(TAdmMDBFile& file) override { events.push_back("will close " + file.name()); }
    void setTreeItemExpanded(TAdmMDBFile& file, bool isExpanded) override
    {
        events.push_back((isExpanded ? "expand " : "collapse ") + file.name());
    }
    void treeSelectionDidChange() override { }
    void scrollToTreeSelection() override { }
    void informationDidChange(InformationChange, InformationType) override { }
    void partDidChange(WindowPart) override { }
    void viewToggleDidChange(ViewToggle) override { }
    void deselectAllForToolbarItems() override { events.emplace_back("toolbar"); }
    void focusDataSearchField() override { events.emplace_back("search field"); }
    void openDidBegin(const TAdmMDBFile& file) override { events.push_back("opening " + file.name()); }
    void openDidProgress(std::uint64_t, std::uint64_t) override
    {
        if (duringOpening) duringOpening();
    }
    void openDidEnd() override { events.emplace_back("opening ended"); }
    void lookupDidBegin(const TAdmMDBTable& table) override { events.push_back("looking up " + table.name()); }
    void lookupDidProgress(std::uint64_t, std::uint64_t) override { }
    void lookupDidEnd() override { events.emplace_back("looking up ended"); }
    void beginDamageSheet(const std::shared_ptr<DamageDetails>& details) override { damageSheet = details; }
    void beginPasswordSheet(const PasswordQuestion& question) override { passwordSheets.push_back(question.message); }
    void beginSalvageSheet() override { events.emplace_back("salvage sheet"); }
    void beginExportSheet(const std::shared_ptr<ExportWizard>&) override { events.emplace_back("export sheet"); }
    void beginExportProgressSheet(const std::shared_ptr<ExportWizard>&) override
    {
        events.emplace_back("progress sheet");
    }
    std::unique_ptr<ChildWindowPort> createChildWindow(ChildWindow&) override
    {
        return std::make_unique<FakeChildWindow>(childEvents);
    }
    bool isFullScreen() const override { return isFull; }
    void bringToFront() override { events.emplace_back("front"); }

    FakeDataView data;
    std::vector<std::string> events;
    std::vector<std::string> childEvents;
    std::vector<std::string> passwordSheets;    // what each said
    std::shared_ptr<DamageDetails> damageSheet; // the one begun last
    std::function<void()> duringOpening;        // what the user does while a file is opened
    bool isFull = false;
};

} // namespace vellumo::test
