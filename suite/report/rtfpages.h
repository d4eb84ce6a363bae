#pragma once

#include "platform/offer.h"
#include "platform/rtftokens.h"
#include "suite/report/richtext.h"

/// What pages show of an RTF document: fonts and their looks, alignment, indents and spacing, tables with widths,
/// borders, shading and merged cells, PNG and JPEG pictures, page breaks, the size and margins of the paper. What is not
/// among these (text boxes, heads and feet of pages) is left out. Lengths that make no sense are brought within bounds.
FBT_OFFERED RichPages ReadRtfPages(RtfTokens &tokens);
