// A small picture for each type of file: a sheet of paper in the colour of the type's family with
// the extension on it. Main thread.
#pragma once

#include <QPixmap>
#include <QString>

namespace norvo {

enum class TypeFamily { photo, video, raw, audio, document, generic };

// By the extension, without its full stop, in any case.
TypeFamily family_of(const QString& extension);

// `size` in device-independent pixels for a screen of `ratio`. Made once for each extension.
QPixmap type_icon(const QString& extension, int size, double ratio);

}  // namespace norvo
