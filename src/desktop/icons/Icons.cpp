#include "desktop/icons/Icons.h"

#include "desktop/icons/SvgIconEngine.h"

#include <QFile>
#include <QMimeDatabase>
#include <array>

// A static library's resources are registered only on demand; the macro has to stand outside every namespace.
static void registerIcons() { Q_INIT_RESOURCE(icons); }

namespace vellumo {

namespace {

struct TypeIcon {
    const char* mimePrefix; // of the type or one of its ancestors
    const char* name;
};

// The first that fits is taken.
constexpr std::array typeIcons{
    TypeIcon{"image/", "type_image"},
    TypeIcon{"audio/", "type_audio"},
    TypeIcon{"video/", "type_video"},
    TypeIcon{"application/vnd.ms-access", "database"},
    TypeIcon{"application/vnd.oasis.opendocument.spreadsheet", "type_sheet"},
    TypeIcon{"application/vnd.ms-excel", "type_sheet"},
    TypeIcon{"application/vnd.openxmlformats-officedocument.spreadsheetml", "type_sheet"},
    TypeIcon{"application/vnd.ms-powerpoint", "type_slides"},
    TypeIcon{"application/vnd.oasis.opendocument.presentation", "type_slides"},
    TypeIcon{"application/vnd.openxmlformats-officedocument.presentationml", "type_slides"},
    TypeIcon{"application/zip", "type_archive"},
    TypeIcon{"application/gzip", "type_archive"},
    TypeIcon{"application/x-7z-compressed", "type_archive"},
    TypeIcon{"text/", "type_text"},
    TypeIcon{"application/msword", "type_text"},
    TypeIcon{"application/rtf", "type_text"},
    TypeIcon{"application/pdf", "type_text"},
    TypeIcon{"application/vnd.oasis.opendocument.text", "type_text"},
    TypeIcon{"application/vnd.openxmlformats-officedocument.wordprocessingml", "type_text"},
};

QString ownTypeIconName(const QMimeType& type)
{
    for (const auto& candidate : typeIcons)
        if (type.name().startsWith(QLatin1String(candidate.mimePrefix))) return candidate.name;
    return "type_unknown";
}

} // namespace

QIcon icon(const QString& name)
{
    registerIcons();
    auto file = name;
    if (file.endsWith("_32x32")) file.chop(6);
    const auto path = ":/vellumo/icons/" + file + ".svg";
    return QFile::exists(path) ? QIcon(new SvgIconEngine(path)) : QIcon(); // the icon owns its engine
}

QIcon fileTypeIcon(const QString& extension)
{
    const auto type = QMimeDatabase().mimeTypeForFile("file." + extension.toLower(), QMimeDatabase::MatchExtension);
    for (const auto& name : {type.iconName(), type.genericIconName()})
        if (QIcon::hasThemeIcon(name)) return QIcon::fromTheme(name);
    return icon(ownTypeIconName(type));
}

QIcon applicationIcon() { return icon("application"); }

} // namespace vellumo
