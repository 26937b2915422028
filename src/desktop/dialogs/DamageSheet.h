#pragma once

#include <QDialog>

#include <memory>

namespace vellumo {

class DamageDetails;

// What a damaged file lost, as a list over a window, which can be copied and saved.
class DamageSheet : public QDialog {
public:
    DamageSheet(const std::shared_ptr<DamageDetails>& details, QWidget* window);
};

} // namespace vellumo
