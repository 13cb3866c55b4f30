// The icon file of macOS bundles: one file that holds a picture for each size.
#pragma once

#include <QByteArray>
#include <QImage>
#include <functional>

// A picture of the icon, `size` pixels wide and high.
using DrawIcon = std::function<QImage(int size)>;

// The bytes of an .icns file with pictures of 16, 32, 128, 256 and 512 points, each for plain and
// for high-resolution displays. Pictures below 128 pixels that are for plain displays are kept in
// the old way, colours and transparency apart, as the system does not show them from a PNG in a
// bundle.
QByteArray icon_file(const DrawIcon& draw);

// `plane` in the run-length code of the old pictures: a byte below 128 says that this many bytes
// and one more follow as they are, a larger one that the next byte stands this many times less 125.
QByteArray run_lengths(const QByteArray& plane);
