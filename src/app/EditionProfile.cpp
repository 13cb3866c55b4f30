#include "app/EditionProfile.h"

#include <array>

namespace norvo {
namespace {

struct Edition {
  TextView keyword;
  TextView file_prefix;
  bool hard_disk;
  bool video;
  bool raw_file;
  bool audio;
  TextView long_name;
  TextView support_address;
  TextView page;
};

// In matching order. All addresses lie in the domain reserved for examples until the product has
// its own.
constexpr std::array<Edition, 7> editions{{
    {u"Alder", u"ALD", false, false, true, false, u"Norvo Recovery for Drives",
     u"alder@support.norvo.example", u"alder"},
    {u"Birch", u"BIR", false, true, true, true, u"Norvo Recovery for Removable Media",
     u"birch@support.norvo.example", u"birch"},
    {u"Cedar", u"CED", false, true, true, false, u"Norvo Recovery for Cameras",
     u"cedar@support.norvo.example", u"cedar"},
    {u"Larch", u"LAR", false, true, true, false, u"Norvo Recovery for Memory Cards",
     u"larch@support.norvo.example", u"larch"},
    {u"Maple", u"MAP", false, true, true, false, u"Norvo Recovery for Phones",
     u"maple@support.norvo.example", u"maple"},
    {u"Rowan", u"ROW", true, false, false, false, u"Norvo Recovery for Pictures",
     u"rowan@support.norvo.example", u"rowan"},
    {u"Spruce", u"SPR", true, true, true, false, u"Norvo Recovery for All Media",
     u"spruce@support.norvo.example", u"spruce"},
}};

constexpr std::array<TextView, editions.size()> keywords = [] {
  std::array<TextView, editions.size()> list;
  for (std::size_t i = 0; i < list.size(); ++i) list[i] = editions[i].keyword;
  return list;
}();

constexpr TextView questionnaire =
    u"%0A%0AOperating%20system:%20%0A"
    u"Security,%20antivirus%20or%20firewall%20software%20in%20use:%20%0A"
    u"Hardware%20configuration:%20%0A"
    u"Storage%20medium%20(media%20type,%20storage%20capacity,%20manufacturer):%20%0A"
    u"Possible%20cause%20of%20the%20data%20loss:%20%0A"
    u"Error%20message,%20if%20any:%20%0A"
    u"More%20details%20of%20the%20problem,%20with%20a%20screenshot:%20%0A";

Text support_mail(TextView address, TextView long_name) {
  Text mail = Text(u"mailto:") + Text(address) + u"?subject=" + Text(long_name) +
              u"%20Question&body=Dear%20Customer%20Support,%0A%0AI%20am%20having%20Difficulties%20"
              u"in%20using%20" +
              Text(long_name) + u".%20%0A%0AMy%20Order%20ID%20is%20(Required):%20%20" +
              Text(questionnaire);
  mail = Trim_Str(mail);
  mail = Replace_char_in_string(mail, u"\r\n", u"%0A");
  mail = Replace_char_in_string(mail, u"\n", u"%0A");
  mail = Replace_char_in_string(mail, u" ", u"%20");
  return Replace_char_in_string(mail, u"\"", u"%22");
}

SignatureFileNames file_names(const Edition& edition) {
  const auto named = [&edition](bool exists, TextView suffix) {
    return exists ? Text(edition.file_prefix) + Text(suffix) : Text();
  };
  return {.photo_dll = named(true, u"Ext2.dll"),
          .photo_dll_adv = named(true, u"Ext2Adv.dll"),
          .video_dll = named(edition.video, u"Video.dll"),
          .video_dll_adv = named(edition.video, u"VideoAdv.dll"),
          .raw_dll = named(edition.raw_file, u"Raw.dll"),
          .raw_dll_adv = named(edition.raw_file, u"RawAdv.dll"),
          .audio_dll = named(edition.audio, u"Audio.dll"),
          .audio_dll_adv = named(edition.audio, u"AudioAdv.dll")};
}

}  // namespace

bool EditionProfile::has_search_type(std::int32_t Recovery_MODE) const {
  switch (Recovery_MODE) {
    case 0:
      return !signature_files.photo_dll.empty();
    case 1:
      return names_a_signature_file(signature_files.video_dll);
    case 2:
      return names_a_signature_file(signature_files.raw_dll);
    case 3:
      return names_a_signature_file(signature_files.audio_dll);
    default:
      return false;
  }
}

bool EditionProfile::hides_search_types() const {
  return Find_Str(App_Name, u"Rowan");
}

Text EditionProfile::raw_file_choice_title() const {
  return Find_Str(App_Name, u"Cedar") ? u"Recover Raw Files" : u"";
}

std::span<const TextView> edition_keywords() {
  return keywords;
}

EditionProfile select_edition(TextView bundle_name) {
  EditionProfile profile;
  profile.App_Name = bundle_name;
  profile.Rec_Folder_Name = Text(bundle_name) + u" Results";
  for (const Edition& edition : editions) {
    if (!Find_Str(bundle_name, edition.keyword)) continue;
    profile.USE_HARD_DISK = edition.hard_disk;
    profile.APP_LONG_NAME = edition.long_name;
    profile.signature_files = file_names(edition);
    profile.support_address = edition.support_address;
    profile.reseller_address = u"resellers@support.norvo.example";
    profile.web_address = u"https://www.norvo.example";
    profile.web_address_2 = u"https://www.norvo.example/" + Text(edition.page);
    break;
  }
  profile.support_with_content = support_mail(profile.support_address, profile.APP_LONG_NAME);
  return profile;
}

std::optional<Text> reason_not_to_start(const std::optional<Text>& bundle_name) {
  if (!bundle_name) {
    return u"\nNorvo Recovery is not installed completely: its bundle has no property list that "
           u"names it. Please install it again.";
  }
  if (select_edition(*bundle_name).is_edition()) return std::nullopt;
  return u"\n\u201C" + displayable(*bundle_name) +
         u"\u201D names no edition of Norvo Recovery: its name holds none of Alder, Birch, Cedar, "
         u"Larch, Maple, Rowan and Spruce.";
}

Color getColorFromRGB(std::uint32_t red, std::uint32_t blue, std::uint32_t green) {
  const auto component = [](std::uint32_t value) { return static_cast<float>(value) / 255.0F; };
  return {.red = component(red), .green = component(green), .blue = component(blue)};
}

}  // namespace norvo
