#pragma once

#include "browser/InformationPane.h"

#include <QTableWidget>

namespace vellumo {

// Labels and values beside each other. The label column is as wide as its widest label, the values take the rest.
class PropertyList : public QTableWidget {
public:
    explicit PropertyList(QWidget* parent = nullptr);

    void setProperties(const std::vector<PropertyRow>& properties);
    // The selected rows, label and value parted by a tab.
    [[nodiscard]] std::string selectedText() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void colourLabels();
};

} // namespace vellumo
