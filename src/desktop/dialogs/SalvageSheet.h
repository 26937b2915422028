#pragma once

#include "model/TAdmMDBFile.h"

#include <QDialog>

class QCheckBox;

namespace vellumo {

// Asks, over a window, what of a file to look for beside its sound content.
class SalvageSheet : public QDialog {
public:
    explicit SalvageSheet(QWidget* window);

    [[nodiscard]] Salvage salvage() const;

private:
    QCheckBox* m_withDeleted;
};

} // namespace vellumo
