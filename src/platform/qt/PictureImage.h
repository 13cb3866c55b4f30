// A decoder's picture as the toolkit's. Any thread.
#pragma once

#include <QImage>

#include "platform/decoder/Picture.h"

namespace norvo {

QImage image_of(const Picture& picture);

}  // namespace norvo
