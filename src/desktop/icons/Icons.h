#pragma once

#include <QIcon>
#include <QString>

// The program's own pictures. No icon theme of the desktop is needed; they are drawn anew for every size and scale, in
// the colours of the palette at that moment. Main thread only.
namespace vellumo {

// By the name that the toolbar and the grid give, such as "open_folder_32x32" or "OV_Key"; the null icon for an unknown
// name. The names are those of the SVG files in this folder, with or without "_32x32".
[[nodiscard]] QIcon icon(const QString& name);

// Of files with this extension (without the dot): the desktop's own, or ours where it has none.
[[nodiscard]] QIcon fileTypeIcon(const QString& extension);

// For windows, in colours of its own.
[[nodiscard]] QIcon applicationIcon();

} // namespace vellumo
