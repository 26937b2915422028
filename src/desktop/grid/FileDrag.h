#pragma once

#include <string>

class QPixmap;
class QWidget;

namespace vellumo {

// Drags a copy of the file `path` out of `source`; returns when it was dropped somewhere or refused. An empty path
// drags nothing.
void dragFile(QWidget& source, const std::string& path, const QPixmap& picture);

} // namespace vellumo
