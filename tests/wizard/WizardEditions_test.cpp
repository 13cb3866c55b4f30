// What the editions show of the first screen.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wizard/ScreenLists.h"
#include "wizard/WizardHarness.h"

namespace norvo::test {
namespace {

using testing::Contains;
using testing::Not;
using testing::StartsWith;

const Names drives_only{"idTableView", "_refresh_btn", "_refresh_Box", "_refresh_label",
                        "_open_image_btn"};
const Names choice{"_rec_mode_Box", "_rec_mode_Photo"};

// First screen, forward and back again.
Names visible_after_coming_back(WizardHarness& bench) {
  bench.go_to_settings(0);
  bench.wizard.Back_btn();
  return bench.view.visible();
}

TEST(WizardEditions, OneForPhotosOnlyHasNoChoiceOfSearchTypes) {
  EditionPresentation edition = usual_edition();
  edition.hides_search_types = true;
  edition.signature_files.video_dll = u"";
  edition.signature_files.raw_dll = u"";
  WizardHarness bench(edition);
  bench.wizard.set_up();
  EXPECT_EQ(bench.view.visible(), drives_only);
  EXPECT_EQ(visible_after_coming_back(bench), drives_only);
}

TEST(WizardEditions, OneForPhotosOnlyLeavesTheFirstScreenLikeOthers) {
  EditionPresentation edition = usual_edition();
  edition.hides_search_types = true;
  edition.signature_files.video_dll = u"";
  edition.signature_files.raw_dll = u"";
  WizardHarness bench(edition);
  bench.go_to_settings(0);
  EXPECT_EQ(bench.view.visible(), photo_settings() + search_type_label);
  EXPECT_EQ(bench.view.title(), u"Norvo Long Name - Photo Search");
}

// A name with two keywords may select an edition that has more search types.
TEST(WizardEditions, OneForPhotosOnlyOffersNoOtherTypeWhateverItsFiles) {
  EditionPresentation edition = usual_edition();
  edition.hides_search_types = true;
  edition.signature_files.audio_dll = u"SPRAudio.dll";
  WizardHarness bench(edition);
  bench.wizard.set_up();
  EXPECT_EQ(bench.view.visible(), drives_only);
  EXPECT_EQ(visible_after_coming_back(bench), drives_only);
}

TEST(WizardEditions, EachSearchTypeIsOfferedWhenItsFileIsNamed) {
  struct Offer {
    Text SignatureFileNames::*name;
    std::string radio;
  };
  for (const Offer& offer : {Offer{&SignatureFileNames::video_dll, "_rec_mode_Video"},
                             Offer{&SignatureFileNames::raw_dll, "_rec_mode_RawFile"},
                             Offer{&SignatureFileNames::audio_dll, "_rec_mode_Audio"}}) {
    EditionPresentation edition = usual_edition();
    edition.signature_files = {};
    edition.signature_files.photo_dll = u"SPRExt2.dll";
    edition.signature_files.*offer.name = u"a.dll";
    WizardHarness bench(edition);
    bench.open();
    EXPECT_EQ(bench.view.visible(), drives_only + choice + Names{offer.radio});
    EXPECT_EQ(visible_after_coming_back(bench), drives_only + choice + Names{offer.radio});
  }
}

TEST(WizardEditions, ANameOfFourCharactersIsNone) {
  EditionPresentation edition = usual_edition();
  edition.signature_files.video_dll = u".dll";
  edition.signature_files.raw_dll = u"";
  edition.signature_files.audio_dll = u"abcd";
  WizardHarness bench(edition);
  bench.open();
  EXPECT_EQ(bench.view.visible(), drives_only + choice);
}

TEST(WizardEditions, TheRawFileChoiceHasItsOwnTitleWhereTheEditionHasOne) {
  EditionPresentation edition = usual_edition();
  edition.raw_file_choice_title = u"Recover Raw Files";
  WizardHarness bench(edition);
  bench.wizard.set_up();
  EXPECT_EQ(bench.view.text(Control::rec_mode_RawFile), u"Recover Raw Files");
}

TEST(WizardEditions, TheRawFileChoiceKeepsItsTitleElsewhere) {
  WizardHarness bench;
  bench.wizard.set_up();
  EXPECT_THAT(bench.happened(), Not(Contains(StartsWith("text _rec_mode_RawFile"))));
}

}  // namespace
}  // namespace norvo::test
