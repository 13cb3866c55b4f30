# The seven editions, for all that is made once for each of them: bundles, signature files, menu
# entries, icons, the policy. What an edition does is decided by src/app/EditionProfile.cpp;
# edition_entries_test holds the two together.
#
# norvo_edition(<name> KINDS <search types> PURPOSE <noun> MEDIA <noun> TINT <colour>
#               KEYWORDS <words>)
#
# Adds to NORVO_EDITIONS and sets NORVO_<name>_PREFIX (of the signature files) and the values above.
# PURPOSE completes "Recovery for ..."; MEDIA completes "Brings lost files back from ...". TINT is the
# ground of the icon.
macro(norvo_edition name)
  list(APPEND NORVO_EDITIONS "${name}")
  cmake_parse_arguments("NORVO_${name}" "" "PURPOSE;MEDIA;TINT" "KINDS;KEYWORDS" ${ARGN})
  string(TOUPPER "${name}" NORVO_${name}_PREFIX)
  string(SUBSTRING "${NORVO_${name}_PREFIX}" 0 3 NORVO_${name}_PREFIX)
endmacro()

set(NORVO_EDITIONS)
norvo_edition(Alder KINDS photo raw
  PURPOSE "Drives" MEDIA "removable drives" TINT "#46586b" KEYWORDS drive disk)
norvo_edition(Birch KINDS photo video raw audio
  PURPOSE "Removable Media" MEDIA "removable media" TINT "#2c66a8"
  KEYWORDS stick card USB)
norvo_edition(Cedar KINDS photo video raw
  PURPOSE "Cameras" MEDIA "the cards of cameras" TINT "#8a4a2f" KEYWORDS camera card)
norvo_edition(Larch KINDS photo video raw
  PURPOSE "Memory Cards" MEDIA "memory cards" TINT "#2f7444" KEYWORDS memory card)
norvo_edition(Maple KINDS photo video raw
  PURPOSE "Phones" MEDIA "the cards of phones" TINT "#a3382f" KEYWORDS phone card)
norvo_edition(Rowan KINDS photo
  PURPOSE "Pictures" MEDIA "cards and drives" TINT "#77408f" KEYWORDS picture card drive)
norvo_edition(Spruce KINDS photo video raw
  PURPOSE "All Media" MEDIA "cards, sticks and drives" TINT "#0a6c74"
  KEYWORDS card stick drive disk)
