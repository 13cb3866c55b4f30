// The edition that is running: which search types exist, which drives are offered, how the program
// calls itself. One program serves seven editions; the first keyword that occurs in the bundle name
// selects one. Fixed for the life of the process; any thread may read.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "sigdb/SignatureTables.h"
#include "util/Text.h"

namespace norvo {

struct EditionProfile {
  Text App_Name;               // the bundle name, unaltered
  Text Rec_Folder_Name;        // App_Name and " Results"
  Text APP_LONG_NAME;          // window titles and mail subjects; empty without an edition
  bool USE_HARD_DISK = false;  // fixed disks are offered besides removable media
  SignatureFileNames signature_files;
  Text support_address;       // a mailbox
  Text reseller_address;      // a mailbox
  Text web_address;           // the program's pages
  Text web_address_2;         // the edition's page
  Text support_with_content;  // the complete "mailto:" address of the contact action

  // Whether a keyword was found. Without one there are no signature files.
  bool is_edition() const { return !APP_LONG_NAME.empty(); }

  // Whether the edition searches this type (Recovery_MODE 0 to 3).
  bool has_search_type(std::int32_t Recovery_MODE) const;

  // Presentation that is decided by the bundle name again: an edition without a choice of search
  // types, and the title of the raw-file choice (empty where the usual one stands).
  bool hides_search_types() const;
  Text raw_file_choice_title() const;
};

// The keywords of the seven editions, in the order in which a bundle name is searched for them.
std::span<const TextView> edition_keywords();

// The edition that `bundle_name` selects. Case-sensitive; a name with two keywords takes the one
// that comes first in the order Alder, Birch, Cedar, Larch, Maple, Rowan, Spruce.
EditionProfile select_edition(TextView bundle_name);

// Why no edition can run from a bundle of this name (nothing where the bundle gives none), as an
// alert says it; nothing when one can.
std::optional<Text> reason_not_to_start(const std::optional<Text>& bundle_name);

// A colour of the calibrated RGB space; each component 0 to 1.
struct Color {
  float red = 0;
  float green = 0;
  float blue = 0;
  float alpha = 1;

  bool operator==(const Color&) const = default;
};

// Components 0 to 255, in the order red, BLUE, green.
Color getColorFromRGB(std::uint32_t red, std::uint32_t blue, std::uint32_t green);

}  // namespace norvo
