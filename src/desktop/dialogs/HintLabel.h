#pragma once

#include "export/ExportHints.h"

#include <QLabel>
#include <QWidget>

namespace vellumo {

// The hints that belong beside one control: a picture and plain text that wraps. Takes no room while there are none.
class HintLabel : public QWidget {
public:
    explicit HintLabel(QWidget* parent = nullptr);

    // Those of `hints` that are for this place.
    void show(const std::vector<ExportHint>& hints, ExportHint::Place place);
    // A line a hint; "" for none.
    [[nodiscard]] QString text() const { return m_text->text(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    void showPicture();

    QLabel* m_picture; // both are children
    QLabel* m_text;
    QString m_pictureName = "information";
};

} // namespace vellumo
