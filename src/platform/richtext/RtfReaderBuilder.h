#pragma once
// Puts what the RTF reader finds into a QTextDocument: paragraphs of runs
// (text in one character format, or a picture), and tables, whose rows are
// gathered until the table ends and then inserted at once. Text goes in run
// by run inside one edit block, so that large documents load quickly.
#include <QColor>
#include <QList>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextImageFormat>

class QTextDocument;

namespace rtf {

struct RtfRun
{
    QString text;
    QTextCharFormat format;  // a QTextImageFormat for a picture
    bool image = false;
};

struct RtfParagraph
{
    QTextBlockFormat blockFormat;
    QTextCharFormat markFormat;  // the format of the paragraph mark (the height of an empty line)
    QList<RtfRun> runs;
    bool isEmpty() const { return runs.isEmpty(); }
};

struct RtfCellDefinition
{
    int rightEdge = 0;  // twips from the row's origin (\cellx)
    QColor background;  // invalid: none
    bool mergeFirst = false;  // \clmgf: first of horizontally merged cells
    bool merged = false;  // \clmrg: merged into the cell before it
    bool verticalFirst = false;  // \clvmgf
    bool verticalMerged = false;  // \clvmrg: merged into the cell above
};

struct RtfRowDefinition
{
    QList<RtfCellDefinition> cells;
    int gap = 0;  // \trgaph: half the space between cells, twips
    int left = 0;  // \trleft
    Qt::Alignment alignment = Qt::AlignLeft;
    bool borders = false;
};

class RtfReaderBuilder
{
public:
    // The most columns of a table; further cells of a row join its last one.
    static constexpr int maxColumns = 64;
    // The most cells of one table; a longer table goes on as a new one.
    static constexpr int maxCells = 100000;

    explicit RtfReaderBuilder(QTextDocument &document);
    ~RtfReaderBuilder();
    RtfReaderBuilder(const RtfReaderBuilder &) = delete;
    RtfReaderBuilder &operator=(const RtfReaderBuilder &) = delete;

    void addText(const QString &text, const QTextCharFormat &format);
    void addImage(const QTextImageFormat &format);

    // The paragraph mark (\par): the paragraph goes into the open table's
    // current cell when inTable, else after the table (which ends).
    void endParagraph(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat, bool inTable);
    // The end of a cell (\cell) and of a row (\row).
    void endCell(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat);
    void endRow(const RtfRowDefinition &row);
    // The end of the text: the last paragraph, which has no mark.
    void finish(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat, bool inTable);

    // Characters put into the document so far (with what is gathered).
    qint64 characters() const { return m_characters; }

private:
    struct Cell
    {
        QList<RtfParagraph> paragraphs;
    };
    struct Row
    {
        QList<Cell> cells;
        RtfRowDefinition definition;
    };

    void takeParagraph(RtfParagraph &into, const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat);
    void writeParagraph(QTextCursor &cursor, const RtfParagraph &paragraph, bool intoCurrentBlock, bool firstInCell);
    void writeFlowParagraph(const RtfParagraph &paragraph);
    void addRow(Row row);
    void writeTable();

    QTextCursor m_cursor;
    // The cursor's block is empty and unused: the start of the document, or
    // the block after a table.
    bool m_fresh = true;
    RtfParagraph m_paragraph;
    qint64 m_characters = 0;

    bool m_inTable = false;
    QList<Row> m_rows;
    Row m_row;
    Cell m_cell;
    int m_columns = 0;
};

}  // namespace rtf
