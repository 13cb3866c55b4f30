// The first bytes of real files, or bytes written from the definition of the format.

#include "ShippedTablesSamples.h"

#include <array>

namespace shipped {

namespace {

constexpr auto kVideoGeneral = std::to_array<Sample>({
    {"MP4", "ffmpeg", "000000 ' ftypisom' 00000200"},
    {"MP4", "ffmpeg", "0000001C 'ftypiso5' 00000200"},
    {"MP4", "ffmpeg", "000000 ' ftypMSNV' 00000200"},
    {"M4V", "ffmpeg", "000000 ' ftypM4V ' 00000200"},
    {"MOV", "ffmpeg", "00000014 'ftypqt  ' 00000200"},
    {"AVI", "ffmpeg", "'RIFF' 909A0300 'AVI LIST'"},
    {"WEBM", "ffmpeg", "1A45DFA3 9F428681 0142F781 0142F281 0442F381 08428284 'webm'"},
    {"MKV", "ffmpeg", "1A45DFA3 A3428681 0142F781 0142F281 0442F381 08428288 'matroska'"},
    {"WEBM", "mkvmerge", "1A45DFA3 9F428681 0142F781 0142F281 0442F381 08428284 'webm'"},
    {"MKV", "mkvmerge", "1A45DFA3 A3428681 0142F781 0142F281 0442F381 08428288 'matroska'"},
    {"VOB", "ffmpeg", "000001BA 44000400 04010189 C3F80000 01BB"},
    {"MPG", "ffmpeg", "000001BA 44000400 04014343 5BF80000"},
    {"MPG", "ffmpeg", "000001BA 21000100 01A1A1AD 000001BB"},
    {"MPG", "ffmpeg", "000001BA 21000100 01A1A1AD 000001BB"},
    {"TS", "ffmpeg", "47401110 0042F025 0001C100 00FF01FF"},
    {"M2TS", "ffmpeg", "0EBF4622 47401110 0042F025 0001C100"},
    {"WMV", "ffmpeg", "3026B275 8E66CF11 A6D900AA 0062CE6C"},
    {"FLV", "ffmpeg", "464C5601 05000000 09000000 00120001"},
    {"F4V", "ffmpeg", "000000 ' ftypf4v ' 00000200"},
    {"MXF", "ffmpeg", "060E2B34 02050101 0D010201 01020400"},
    {"MXF", "ffmpeg", "060E2B34 02050101 0D010201 01020400"},
    {"OGV", "ffmpeg", "'OggS' 00020000 00000000 0000C584 7F6E0000 00003E75 BB3C012A 80 'theora'"},
    {"DV", "ffmpeg",
     "1F0700BF F8787878 FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF "
     "FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF "
     "FFFFFFFF FFFFFFFF 3F07008F F0FF1300 8080C0"},
    {"DV", "ffmpeg",
     "1F07003F F9797979 FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF "
     "FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF "
     "FFFFFFFF FFFFFFFF 3F07008F F0FF1300 8080C0"},
    {"MP4", "format", "00000018 'ftypmp42' 00000000 'isommp42'"},
    {"MP4", "format", "00000020 'ftypmp41' 00000000"},
    {"MP4", "format", "0000001C 'ftypavc1' 00000000"},
    {"MP4", "format", "0000001C 'ftypXAVC' 00000000 'XAVCmp42iso2'"},
    {"MP4", "format", "00000018 'ftypiso2' 00000000"},
    {"MP4", "format", "00000018 'ftypdash' 00000000"},
    {"M4V", "format", "00000018 'ftypM4VH' 00000001"},
    {"MOV", "format", "00000008 'wide' 00100000 'mdat'"},
    {"3GP", "format", "00000018 'ftyp3gp4' 00000000"},
    {"3GP", "format", "00000018 'ftyp3gp5' 00000000"},
    {"3GP", "format", "00000018 'ftyp3gp6' 00000000"},
    {"3G2", "format", "00000018 'ftyp3g2a' 00010000"},
    {"MKV", "format", "1A45DFA3 93 428288 'matroska' 428781 01"},
    {"MKV", "format",
     "1A45DFA3 01000000 00000023 42868101 42F78101 42F28104 42F38108 428288 'matroska'"},
    {"WEBM", "format",
     "1A45DFA3 01000000 0000001F 42868101 42F78101 42F28104 42F38108 428284 'webm'"},
    {"MKV", "format", "1A45DFA3 8B 428288 'matros'"},
    {"MTS", "format", "00000000 47400010 0000B011 0000C100 000000E0 1F0001E1 00"},
    {"TS", "format", "47400010 0000B00D 0001C100 000001F0 00"},
    {"FLV", "format", "'FLV' 01 01 00000009 00000000"},
    {"OGV", "format", "'OggS' 00 02 @14 11223344 @26 01 40 'fishead' 00"},
});

constexpr auto kVideoThorough = std::to_array<Sample>({
    {"MP4", "ffmpeg", "00000018 'ftypisml' 00000200"},
    {"M2V", "ffmpeg", "000001B3 16012023 FFFFE018 000001B5"},
    {"H264", "ffmpeg", "00000001 6764000D ACD94160 96C08400"},
    {"H265", "ffmpeg", "00000001 40010C01 FFFF0160 00000300"},
    {"IVF", "ffmpeg", "'DKIF' 00002000 'VP80`' 012001"},
    {"Y4M", "ffmpeg", "'YUV4MPEG2 W352 H'"},
    {"RM", "ffmpeg", "'.RMF' 00000012 00000000 00000000"},
    {"WTV", "ffmpeg", "B7D80020 3749DA11 A64E0007 E95EAD8D"},
    {"NUT", "ffmpeg", "'nut/multimedia container' 00"},
    {"MP4", "format", "00000018 'ftypiso3' 00000000"},
    {"3GP", "format", "00000018 'ftyp3gp2' 00000000"},
    {"3G2", "format", "00000018 'ftypKDDI' 00000000"},
    {"MOV", "format", "00001000 'moov' 0000006C 'mvhd' 00000000"},
    {"MOV", "format", "01000000 'mdat' 00000000"},
    {"MOV", "format", "00000008 'free' 00000000"},
    {"MOV", "format", "00000008 'skip' 00000000"},
    {"MOV", "format", "00000014 'pnot' 00000000"},
    {"MOV", "format", "00000018 'ftypniko' 00000000"},
    {"TS", "format", "47400010 0000B011 0001C100"},
    {"M2TS", "format", "00001234 47401110 0042F025"},
    {"MTS", "format", "00001234 47400010 0000B011 0000C100 000000E0 1F"},
    {"AVI", "format", "'RIFF' 00001000 'AVI JUNK' 00010000"},
    {"FLV", "format", "'FLV' 01 04 00000009"},
    {"DAT", "format", "'RIFF' 00001000 'CDXAfmt ' 10000000"},
    {"R3D", "format", "00000158 'RED1' 0101"},
    {"R3D", "format", "00000158 'RED2' 0001"},
});

constexpr auto kRawGeneral = std::to_array<Sample>({
    {"CR3", "format", "00000018 'ftypcrx ' 00000001 'crx isom'"},
    {"CR2", "format", "49492A00 10000000 'CR' 0200 B4BC0000"},
    {"RAF", "format", "'FUJIFILMCCD-RAW 0201FF393101'"},
    {"ORF", "format", "'IIRO' 08000000"},
    {"IIQ", "format", "49492A00 10000000 'IIIITwaR'"},
    {"IIQ", "format", "4D4D002A 00000010 'MMMMRawT'"},
    {"X3F", "format", "'FOVb' 00000400"},
    {"RW2", "format", "49495500 18000000 88E774D8 F8251D4D"},
    {"RAW", "format", "49495500 08000000 2300"},
    {"RWL", "format", "49495500 20000000 00000000"},
    {"NEF", "format",
     "49492A00 08000000 1B00 FE000400 01000000 01000000 00010400 01000000 A0000000 "
     "01010400 01000000 78000000"},
    {"NEF", "format",
     "4D4D002A 00000008 0019 00FE0004 00000001 00000001 01000004 00000001 000000A0 "
     "01010004 00000001 00000078"},
    {"ARW", "format",
     "49492A00 08000000 1100 FE000400 01000000 01000000 03010300 01000000 06000000 "
     "0E010200 20000000"},
    {"DNG", "format",
     "49492A00 08000000 3400 FE000400 01000000 01000000 00010400 01000000 00010000 "
     "01010400 01000000 AB000000"},
    {"DNG", "format",
     "4D4D002A 00000008 0030 00FE0004 00000001 00000000 01000004 00000001 00000FC0"},
    {"PEF", "format", "49492A00 08000000 1200 00010400 01000000 50140000"},
    {"PEF", "format", "4D4D002A 00000008 0012 01000004 00000001 00000FC0"},
    {"PEF", "format", "49492A00 08000000 1200 00010300 01000000 50140000"},
    {"PEF", "format", "4D4D002A 00000008 0012 01000003 00000001 0FC00000"},
    {"NEF", "format", "49492A00 08000000 1200 0F010200 05000000 C8000000"},
    {"NEF", "format", "4D4D002A 00000008 0012 010F0002 00000005 000000C8"},
});

constexpr auto kRawThorough = std::to_array<Sample>({
    {"CRW", "format", "4949 1A000000 'HEAPCCDR'"},
    {"MRW", "format", "00 'MRM' 000122D8"},
    {"ORF", "format", "'IIRS' 08000000"},
    {"ORF", "format", "'MMOR' 00000008"},
    {"QTK", "format", "'qktk' 00000004"},
    {"DNG", "format", "49492B00 08000000 10000000 00000000"},
    {"DNG", "format", "4D4D002B 00080000 00000000 00000010"},
});

constexpr auto kAudioGeneral = std::to_array<Sample>({
    {"MP3", "ffmpeg", "49443304 00000000 00 '#TSSE' 0000"},
    {"MP3", "ffmpeg", "49443303 00000000 00 '#TSSE' 0000"},
    {"MP3", "ffmpeg", "FFFB40C0 @21 'Info' 0000"},
    {"MP3", "ffmpeg", "FFFB50 @36 'Info' 000000"},
    {"MP3", "lame", "FFFB50C4 @21 'Info' 0000"},
    {"MP3", "lame", "FFFB90C4 @21 'Xing' 0000"},
    {"MP3", "ffmpeg", "FFF380C4 00000000 00000000 00 'Info' 00"},
    {"M4A", "ffmpeg", "0000001C 'ftypM4A ' 00000200"},
    {"M4A", "ffmpeg", "0000001C 'ftypM4A ' 00000200"},
    {"AAC", "ffmpeg", "FFF15040 213FFCDE 0200 'Lavc59'"},
    {"AAC", "ffmpeg", "FFF14C80 26DFFCDE 0200 'Lavc59'"},
    {"WAV", "ffmpeg", "'RIFFv' 130800 'WAVEfmt '"},
    {"WAV", "ffmpeg", "'RIFF' D8150800 'WAVEfmt '"},
    {"WAV", "ffmpeg", "'RF64' FFFFFFFF 'WAVEds64'"},
    {"FLAC", "ffmpeg", "'fLaC' 00000022 12001200 00024900"},
    {"FLAC", "flac", "'fLaC' 00000022 10001000 0002D900"},
    {"OGG", "ffmpeg", "'OggS' 00020000 00000000 00007B7A 0D580000 000019E5 2CC3011E 01 'vorbis'"},
    {"OGG", "oggenc", "'OggS' 00020000 00000000 00002775 F3130000 00006187 8C93011E 01 'vorbis'"},
    {"OPUS", "ffmpeg", "'OggS' 00020000 00000000 0000FDF9 2D8B0000 000006B6 E6300113 'OpusHead'"},
    {"OPUS", "opusenc", "'OggS' 00020000 00000000 0000F38F B6700000 0000CDAC C6B30113 'OpusHead'"},
    {"OGA", "ffmpeg", "'OggS' 00020000 00000000 00005996 6FD00000 00009C39 2AF30133 7F 'FLAC'"},
    {"AIF", "ffmpeg", "'FORM' 000813 '^AIFFCOMM'"},
    {"WMA", "ffmpeg", "3026B275 8E66CF11 A6D900AA 0062CE6C"},
    {"CAF", "ffmpeg", "'caff' 00010000 'desc' 00000000"},
    {"WV", "wavpack", "'wvpk' D6280000 10040000 98090400 00000000 22560000"},
    {"WV", "ffmpeg", "'wvpk' AE4E0000 10040000 98090400 00000000 44AC0000"},
    {"MP3", "format", "'ID3' 02 00 00 00001000"},
    {"MP3", "format", "FFFB9064 @36 'VBRI' 0001"},
    {"MP3", "format", "FFF384C4 @13 'Xing' 0000000F"},
    {"M4B", "format", "00000020 'ftypM4B ' 00000000"},
    {"M4P", "format", "00000020 'ftypM4P ' 00000000"},
    {"WAV", "format", "'RIFF' 24100000 'WAVEbext' 5A020000"},
    {"WAV", "format", "'RIFF' 24100000 'WAVEJUNK' 1C000000"},
    {"WAV", "format", "'RIFF' 24100000 'WAVELIST' 1C000000"},
    {"WAV", "format", "'RIFF' 24100000 'WAVEFLLR' 1C000000"},
    {"AIF", "format", "'FORM' 00100000 'AIFCFVER' 00000004"},
    {"AMR", "format", "'#!AMR' 0A 3C"},
    {"AWB", "format", "'#!AMR-WB' 0A 44"},
    {"MID", "format", "'MThd' 00000006 0001 0002 01E0"},
    {"DSF", "format", "'DSD ' 1C000000 00000000 5C000001"},
    {"APE", "format", "'MAC ' 960F 0000 34000000"},
});

constexpr auto kAudioThorough = std::to_array<Sample>({
    {"MP3", "lame", "FFFB50C4 00000A ',C.U' 94800181 15"},
    {"MP3", "ffmpeg", "FFFBB064 0000051E 24C8156D E0020000"},
    {"SPX", "ffmpeg", "'OggS' 00020000 00000000 000093D2 3C990000 0000E349 7C6401 'PSpeex   '"},
    {"W64", "ffmpeg", "'riff.' 91CF11A5 D628DB04 C10000"},
    {"MKA", "ffmpeg", "1A45DFA3 A3428681 0142F781 0142F281 0442F381 08428288 'matroska'"},
    {"AU", "ffmpeg", "'.snd' 00000020 00081330 00000003"},
    {"RA", "ffmpeg", "'.RMF' 00000012 00000000 00000000"},
    {"VOC", "ffmpeg", "'Creative Voice File' 1A"},
    {"TTA", "ffmpeg", "'TTA1' 01000100 100044AC 00009809"},
    {"MP3", "format", "FFFB9064 0000000000"},
    {"MP3", "format", "FFFBB464 000003"},
    {"AAC", "format", "FFF15080 2E7FFC"},
    {"AAC", "format", "FFF94C80 2E7FFC"},
    {"AAX", "format", "00000024 'ftypaax ' 00000001"},
    {"FLAC", "format", "'fLaC' 80000022 1000"},
    {"WAV", "format", "'RIFF' 24100000 'WAVEfact' 04000000"},
    {"RF64", "format", "'BW64' FFFFFFFF 'WAVEds64'"},
    {"MKA", "format", "1A45DFA3 93 428288 'matroska'"},
    {"MKA", "format",
     "1A45DFA3 01000000 00000023 42868101 42F78101 42F28104 42F38108 428288 'matroska'"},
    {"RA", "format", "2E7261FD 0004"},
    {"IFF", "format", "'FORM' 00100000 '8SVXVHDR' 00000014"},
    {"DFF", "format", "'FRM8' 00000000 00100000 'DSD '"},
    {"APE", "format", "'MAC ' 8C0F 0000"},
    {"TAK", "format", "'tBaK' 00220000"},
    {"MPC", "format", "'MPCKSH' 0F"},
    {"MPC", "format", "'MP+' 07"},
    {"OFR", "format", "'OFR ' 0F000000"},
    {"QCP", "format", "'RIFF' 24100000 'QLCMfmt ' 96000000"},
    {"DSS", "format", "02 'dss'"},
    {"DSS", "format", "03 'dss'"},
    {"DS2", "format", "03 'ds2'"},
    {"RMI", "format", "'RIFF' 24100000 'RMIDdata' 10000000"},
    {"XM", "format", "'Extended Module song'"},
    {"IT", "format", "'IMPM' 00"},
    {"S3M", "format", "'song' 00 @28 1A10 @44 'SCRM'"},
});

}  // namespace

std::span<const Sample> video_general_samples() {
  return kVideoGeneral;
}

std::span<const Sample> video_thorough_samples() {
  return kVideoThorough;
}

std::span<const Sample> raw_general_samples() {
  return kRawGeneral;
}

std::span<const Sample> raw_thorough_samples() {
  return kRawThorough;
}

std::span<const Sample> audio_general_samples() {
  return kAudioGeneral;
}

std::span<const Sample> audio_thorough_samples() {
  return kAudioThorough;
}

}  // namespace shipped
