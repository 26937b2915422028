#pragma once

class QMenu;

namespace vellumo {

class DataView;

// Adds what can be done with the object that the DataView shows: open it and save it. Nothing for a text.
void addObjectActions(QMenu& menu, DataView& dataView);

} // namespace vellumo
