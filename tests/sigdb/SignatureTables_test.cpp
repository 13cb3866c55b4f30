#include "sigdb/SignatureTables.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>

#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

namespace norvo {
namespace {

namespace fs = std::filesystem;

const SignatureFileNames all_names{.photo_dll = u"photo.dll",
                                   .photo_dll_adv = u"photo-adv.dll",
                                   .video_dll = u"video.dll",
                                   .video_dll_adv = u"video-adv.dll",
                                   .raw_dll = u"raw.dll",
                                   .raw_dll_adv = u"raw-adv.dll",
                                   .audio_dll = u"audio.dll",
                                   .audio_dll_adv = u"audio-adv.dll"};

constexpr std::array<const char*, 8> files_in_order{"photo.dll",     "photo-adv.dll", "video.dll",
                                                    "video-adv.dll", "raw.dll",       "raw-adv.dll",
                                                    "audio.dll",     "audio-adv.dll"};

std::string record(const std::string& extension, const std::string& header = "FF") {
  return "Ext : " + extension + "\nSize : 1\nHeader : " + header +
         "\nPos : 1\nKind :\nInfo : text\n";
}

SignatureTable table_of(const Text& extension) {
  return {extension, u"1", u"FF", u"1", u"", u"text", u"255"};
}

class SignatureTablesTest : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& content) const {
    test::write_file(folder_.path() / name, content);
  }
  SignatureTables load(const SignatureFileNames& names = all_names) const {
    SignatureTables tables;
    tables.load(folder_.path(), names);
    return tables;
  }

  test::TemporaryFolder folder_;
};

std::array<const SignatureTable*, 8> in_order(const SignatureTables& tables) {
  return {&tables.Ext_Array,       &tables.Adv_Ext_Array,  &tables.Video_Array,
          &tables.Adv_Video_Array, &tables.RawFile_Array,  &tables.Adv_RawFile_Array,
          &tables.Audio_Array,     &tables.Adv_Audio_Array};
}

TEST_F(SignatureTablesTest, EachTableComesFromItsFile) {
  for (const char* name : files_in_order) write(name, record(fs::path(name).stem().string()));
  const SignatureTables tables = load();
  EXPECT_EQ(tables.Ext_Array, table_of(u"photo"));
  EXPECT_EQ(tables.Adv_Ext_Array, table_of(u"photo-adv"));
  EXPECT_EQ(tables.Video_Array, table_of(u"video"));
  EXPECT_EQ(tables.Adv_Video_Array, table_of(u"video-adv"));
  EXPECT_EQ(tables.RawFile_Array, table_of(u"raw"));
  EXPECT_EQ(tables.Adv_RawFile_Array, table_of(u"raw-adv"));
  EXPECT_EQ(tables.Audio_Array, table_of(u"audio"));
  EXPECT_EQ(tables.Adv_Audio_Array, table_of(u"audio-adv"));
}

// Each file ends with a lone header line, and the next file's first record has none of its own.
TEST_F(SignatureTablesTest, FilesAreReadInOrderAndHandThePendingHeaderByteOn) {
  const std::string record_without_header = "a :\nb :\nc :\nd :\ne :\nf :\n";
  for (std::size_t i = 0; i < files_in_order.size(); ++i) {
    write(files_in_order[i], record_without_header + "Header : 4" + std::to_string(i) + "\n");
  }
  const SignatureTables tables = load();
  const auto loaded = in_order(tables);
  for (std::size_t i = 0; i < loaded.size(); ++i) {
    ASSERT_EQ(loaded[i]->size(), 8U) << files_in_order[i];
    EXPECT_EQ(loaded[i]->at(6), i == 0 ? u"" : decimal(0x40 + i - 1)) << files_in_order[i];
  }
}

TEST_F(SignatureTablesTest, AFileThatIsNotThereHandsThePendingHeaderByteOn) {
  write("photo.dll", "Header : 41\n");
  write("audio-adv.dll", "a :\nb :\nc :\nd :\ne :\nf :\n");
  EXPECT_EQ(load().Adv_Audio_Array, (SignatureTable{u"", u"", u"", u"", u"", u"", u"65"}));
}

TEST_F(SignatureTablesTest, EachLoadBeginsWithoutAPendingHeaderByte) {
  write("photo.dll", "a :\nb :\nc :\nd :\ne :\nf :\n");
  write("photo-adv.dll", "Header : 41\n");
  EXPECT_EQ(load().Ext_Array.back(), u"");
  EXPECT_EQ(load().Ext_Array.back(), u"");
}

TEST_F(SignatureTablesTest, AMissingFileGivesAnEmptyTable) {
  write("photo-adv.dll", record("png"));
  const SignatureTables tables = load();
  EXPECT_EQ(tables.Ext_Array, SignatureTable{});
  EXPECT_EQ(tables.Adv_Ext_Array, table_of(u"png"));
}

TEST_F(SignatureTablesTest, AnUnreadableFileGivesAnEmptyTable) {
  fs::create_directory(folder_.path() / "photo.dll");
  write("photo-adv.dll", record("png"));
  if (geteuid() != 0) {
    ASSERT_EQ(chmod((folder_.path() / "photo-adv.dll").c_str(), 0), 0);
    EXPECT_EQ(load().Adv_Ext_Array, SignatureTable{});
  }
  EXPECT_EQ(load().Ext_Array, SignatureTable{});
}

TEST_F(SignatureTablesTest, AMissingFolderGivesEmptyTables) {
  SignatureTables tables;
  tables.load(folder_.path() / "nowhere", all_names);
  for (const SignatureTable* table : in_order(tables)) EXPECT_TRUE(table->empty());
}

TEST_F(SignatureTablesTest, AFileThatIsNotUtf8GivesAnEmptyTable) {
  for (const char* bad : {"\xFF", "\xC3", "\xED\xA0\x80", "\xC0\x80"}) {
    write("photo.dll", record("jpg") + "# " + bad);
    EXPECT_EQ(load().Ext_Array, SignatureTable{});
  }
  write("photo.dll", record("jpg") + "# \xC3\xA4");
  EXPECT_EQ(load().Ext_Array, table_of(u"jpg"));
}

TEST_F(SignatureTablesTest, AFileThatIsNotUtf8LeavesNoPendingHeaderByte) {
  write("photo.dll", "Header : 41\n\xFF");
  write("photo-adv.dll", "a :\nb :\nc :\nd :\ne :\nf :\n");
  EXPECT_EQ(load().Adv_Ext_Array.back(), u"");
}

TEST_F(SignatureTablesTest, TextsBeyondAsciiAreKept) {
  write("photo.dll", record("\xC3\xA4\xF0\x9F\x98\x80"));
  EXPECT_EQ(load().Ext_Array, table_of(u"\u00E4\U0001F600"));
}

TEST_F(SignatureTablesTest, AFileAbove64MebibytesGivesAnEmptyTable) {
  constexpr std::uintmax_t limit = 64U << 20U;
  write("photo.dll", record("jpg"));
  fs::resize_file(folder_.path() / "photo.dll", limit);
  write("photo-adv.dll", record("jpg"));
  fs::resize_file(folder_.path() / "photo-adv.dll", limit + 1);
  const SignatureTables tables = load();
  EXPECT_EQ(tables.Ext_Array, table_of(u"jpg"));
  EXPECT_EQ(tables.Adv_Ext_Array, SignatureTable{});
}

TEST(NamesASignatureFile, NeedsMoreThanFourCharacters) {
  EXPECT_FALSE(names_a_signature_file(u""));
  EXPECT_FALSE(names_a_signature_file(u".dll"));
  EXPECT_TRUE(names_a_signature_file(u"a.dll"));
}

TEST_F(SignatureTablesTest, ATypeWhoseGeneralNameIsTooShortIsNotRead) {
  SignatureFileNames names = all_names;
  names.video_dll = names.raw_dll = names.audio_dll = u"four";
  for (const char* name : files_in_order) write(name, record("jpg"));
  write("four", record("jpg"));
  const SignatureTables tables = load(names);
  EXPECT_EQ(tables.Ext_Array, table_of(u"jpg"));
  EXPECT_EQ(tables.Adv_Ext_Array, table_of(u"jpg"));
  for (std::size_t i = 2; i < 8; ++i) EXPECT_TRUE(in_order(tables)[i]->empty()) << i;
}

TEST_F(SignatureTablesTest, EachTypeIsTestedByItsOwnName) {
  for (const char* name : files_in_order) write(name, record("jpg"));
  const std::array<Text SignatureFileNames::*, 3> generals{
      &SignatureFileNames::video_dll, &SignatureFileNames::raw_dll, &SignatureFileNames::audio_dll};
  for (std::size_t type = 0; type < generals.size(); ++type) {
    SignatureFileNames names = all_names;
    names.*generals[type] = u"";
    const SignatureTables tables = load(names);
    for (std::size_t i = 2; i < 8; ++i) {
      const bool of_this_type = i / 2 - 1 == type;
      EXPECT_EQ(in_order(tables)[i]->empty(), of_this_type) << type << ' ' << i;
    }
  }
}

TEST_F(SignatureTablesTest, TheThoroughFileIsReadUnderTheTestOnTheGeneralName) {
  SignatureFileNames names = all_names;
  names.video_dll = u"fives";
  names.video_dll_adv = names.raw_dll_adv = names.audio_dll_adv = u"x";
  write("x", record("mov"));
  write("fives", record("avi"));
  const SignatureTables tables = load(names);
  EXPECT_EQ(tables.Video_Array, table_of(u"avi"));
  EXPECT_EQ(tables.Adv_Video_Array, table_of(u"mov"));
  EXPECT_EQ(tables.Adv_RawFile_Array, table_of(u"mov"));
  EXPECT_EQ(tables.Adv_Audio_Array, table_of(u"mov"));
}

TEST_F(SignatureTablesTest, ThePhotoFilesAreReadWhateverTheLengthOfTheirNames) {
  SignatureFileNames names;
  names.photo_dll = u"p";
  names.photo_dll_adv = u"q";
  write("p", record("jpg"));
  write("q", record("png"));
  const SignatureTables tables = load(names);
  EXPECT_EQ(tables.Ext_Array, table_of(u"jpg"));
  EXPECT_EQ(tables.Adv_Ext_Array, table_of(u"png"));
}

TEST_F(SignatureTablesTest, WithoutNamesEveryTableIsEmpty) {
  const SignatureTables tables = load(SignatureFileNames{});
  for (const SignatureTable* table : in_order(tables)) EXPECT_TRUE(table->empty());
}

}  // namespace
}  // namespace norvo
