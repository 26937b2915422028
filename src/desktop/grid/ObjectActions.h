// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class QPixmap;
class QWidget;
class QMenu;

namespace vellumo {

// Drags a copy of the file `path` out of `source`; returns when it was dropped somewhere or refused. An empty path
// drags nothing.
void dragFile(QWidget& source, const std::string& path, const QPixmap& picture);

class DataView;

// Adds what can be done with the object that the DataView shows: open it and save it. Nothing for a text.
void addObjectActions(QMenu& menu, DataView& dataView);

} // namespace vellumo
