// The EBU STL file (Tech 3264) as the export writes it and the import reads
// it: the fields of the GSI block and of a TTI block, and the codes of the
// text field.
#pragma once

#include <cstddef>
#include <string_view>

namespace quillon::stl {

struct Field {
  size_t offset;
  size_t width;
};

inline std::string_view fieldOf(std::string_view block, Field f) { return block.substr(f.offset, f.width); }

inline constexpr size_t kGsiBlockSize = 1024;
inline constexpr size_t kTtiBlockSize = 128;

// General Subtitle Information, in file order. Numbers are ASCII digits.
namespace gsi {
inline constexpr Field CPN{0, 3};  // code page number
inline constexpr Field DFC{3, 8};  // disk format code
inline constexpr Field DSC{11, 1};  // display standard
inline constexpr Field CCT{12, 2};  // character code table
inline constexpr Field LC{14, 2};   // language code
inline constexpr Field OPT{16, 32};  // original programme title
inline constexpr Field OET{48, 32};  // original episode title
inline constexpr Field TPT{80, 32};  // translated programme title
inline constexpr Field TET{112, 32};  // translated episode title
inline constexpr Field TN{144, 32};   // translator's name
inline constexpr Field TCD{176, 32};  // translator's contact details
inline constexpr Field SLR{208, 16};  // subtitle list reference code
inline constexpr Field CD{224, 6};    // creation date
inline constexpr Field RD{230, 6};    // revision date
inline constexpr Field RN{236, 2};    // revision number
inline constexpr Field TNB{238, 5};   // TTI blocks
inline constexpr Field TNS{243, 5};   // subtitles
inline constexpr Field TNG{248, 3};   // subtitle groups
inline constexpr Field MNC{251, 2};   // characters in a row at most
inline constexpr Field MNR{253, 2};   // rows at most
inline constexpr Field TCS{255, 1};   // time code status
inline constexpr Field TCP{256, 8};   // time code of the programme's start, HHMMSSFF
inline constexpr Field TCF{264, 8};   // time code of the first cue-in
inline constexpr Field TND{272, 1};   // discs
inline constexpr Field DSN{273, 1};   // disc number
inline constexpr Field CO{274, 3};    // country of origin
inline constexpr Field PUB{277, 32};  // publisher
inline constexpr Field EN{309, 32};   // editor's name
inline constexpr Field ECD{341, 32};  // editor's contact details
inline constexpr Field spare{373, 75};
inline constexpr Field UDA{448, 576};  // user-defined area
static_assert(UDA.offset + UDA.width == kGsiBlockSize);

inline constexpr std::string_view kDfc25 = "STL25.01";
inline constexpr std::string_view kDfc30 = "STL30.01";
}  // namespace gsi

// Text and Timing Information: one block a subtitle. Numbers are binary, the
// low byte first.
namespace tti {
inline constexpr Field SGN{0, 1};  // subtitle group number
inline constexpr Field SN{1, 2};   // subtitle number
inline constexpr Field EBN{3, 1};  // extension block number
inline constexpr Field CS{4, 1};   // cumulative status
inline constexpr Field TCI{5, 4};  // cue-in: hours, minutes, seconds, frames
inline constexpr Field TCO{9, 4};  // cue-out, the same
inline constexpr Field VP{13, 1};  // vertical position
inline constexpr Field JC{14, 1};  // justification code
inline constexpr Field CF{15, 1};  // comment flag
inline constexpr Field TF{16, 112};  // text field
static_assert(TF.offset + TF.width == kTtiBlockSize);

inline constexpr unsigned char kLastBlock = 0xFF;  // EBN of a subtitle held in one block

inline constexpr int kJcUnchanged = 0;
inline constexpr int kJcLeft = 1;
inline constexpr int kJcCentre = 2;
inline constexpr int kJcRight = 3;
}  // namespace tti

// Codes of the text field. Italics are the plain characters < and >, not the
// control codes of the standard.
inline constexpr char kStartBox = '\x0B';  // twice in front of each line
inline constexpr char kEndBox = '\x0A';    // behind each line
inline constexpr char kLineBreak = '\x8A';
inline constexpr char kUnused = '\x8F';  // ends the text and pads the field
inline constexpr char kItalicOn = '<';
inline constexpr char kItalicOff = '>';

}  // namespace quillon::stl
