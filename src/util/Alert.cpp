#include "util/Alert.h"

namespace norvo {

AlertAnswer show_msg(AlertPanel& panel, TextView message) {
  return panel.run({.message = Text(message),
                    .default_button = u"OK",
                    .alternate_button = {},
                    .other_button = {},
                    .informative_text = {}});
}

}  // namespace norvo
