#pragma once
// The control words the RTF reader acts on, looked up by name.
#include <QByteArrayView>

namespace rtf {

enum class Keyword {
    Unknown,
    // Header and document
    Rtf, Ansi, Mac, Pc, Pca, AnsiCodePage, DefaultFont, DefaultTab, UnicodeSkip, Unicode, Bin,
    // Destinations
    FontTable, ColourTable, Picture, ShapePicture, NonShapePicture, NeXTGraphic, Field, FieldInstruction,
    FieldResult, SkippedDestination, ShownDestination,
    // Font table
    FontCharset, FontCodePage,
    // Colour table
    Red, Green, Blue,
    // Character formatting
    Plain, Bold, Italic, Underline, UnderlineDotted, UnderlineDashed, UnderlineDashDot, UnderlineDashDotDot,
    UnderlineWave, UnderlineNone, Strike, StrikeDouble, Super, Sub, NoSuperSub, Up, Down,
    Font, FontSize, FontSizeMilli, Foreground, Background, Hidden, Caps, SmallCaps,
    // Paragraph formatting
    ParagraphDefaults, AlignLeft, AlignRight, AlignCentre, AlignJustify, LeftIndent, RightIndent, FirstIndent,
    SpaceBefore, SpaceAfter, LineSpacing, LineSpacingMultiple, TabPosition, BarTab, TabRight, TabCentre,
    TabDecimal, TabLeaderDot, TabLeaderOther, InTable, TableLevel, ParagraphBackground, PageBreakBefore,
    // Characters and breaks
    Paragraph, Line, Tab, Page, Section, EmDash, EnDash, EmSpace, EnSpace, QuarterSpace, Bullet, LeftQuote,
    RightQuote, LeftDoubleQuote, RightDoubleQuote, ZeroWidthJoiner, ZeroWidthNonJoiner, LeftToRightMark,
    RightToLeftMark,
    // Tables
    RowDefaults, CellEdge, Cell, Row, NestedCell, NestedRow, RowGap, RowLeft, RowLeftAligned, RowCentred,
    RowRightAligned, CellBorder, BorderVisible, BorderNone, CellBackground, CellMergeFirst, CellMerged,
    CellVerticalFirst, CellVerticalMerged,
    // Pictures
    PngBlip, JpegBlip, OtherBlip, PictureGoalWidth, PictureGoalHeight,
    PictureScaleX, PictureScaleY,
    // Attachments
    AttachmentWidth, AttachmentHeight,
};

Keyword keywordFor(QByteArrayView word);

}  // namespace rtf
