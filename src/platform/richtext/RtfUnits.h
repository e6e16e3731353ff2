#pragma once
// The unit of length between RTF and a document: RTF measures in twips
// (1/20 point, 1/1440 inch); a document's lengths (indents, spacing, tab
// stops, table widths, picture sizes) are in its own units of 1/96 inch,
// the unit the text views show and printing lays out in. Font sizes stay in
// points.
#include <QtGlobal>

namespace rtf {

constexpr qreal unitsPerInch = 96.0;
constexpr qreal twipsPerUnit = 1440.0 / unitsPerInch;

}  // namespace rtf
