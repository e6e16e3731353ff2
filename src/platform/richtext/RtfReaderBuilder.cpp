#include "platform/richtext/RtfReaderBuilder.h"

#include "platform/richtext/RtfUnits.h"

#include <QTextDocument>
#include <QTextTable>
#include <QTextTableCellFormat>
#include <QTextTableFormat>
#include <algorithm>

namespace rtf {

namespace {

// Each merge of cells goes over the whole table: a table gets at most so
// many merges, and fewer when it is large; the rest stay unmerged.
constexpr int maxMerges = 2000;
constexpr qint64 maxMergeWork = 20000000;

}  // namespace

RtfReaderBuilder::RtfReaderBuilder(QTextDocument &document)
    : m_cursor(&document)
{
    m_cursor.beginEditBlock();
}

RtfReaderBuilder::~RtfReaderBuilder()
{
    m_cursor.endEditBlock();
}

void RtfReaderBuilder::addText(const QString &text, const QTextCharFormat &format)
{
    if (text.isEmpty())
        return;
    m_characters += text.size();
    if (!m_paragraph.runs.isEmpty()) {
        RtfRun &last = m_paragraph.runs.last();
        if (!last.image && last.format == format) {
            last.text += text;
            return;
        }
    }
    m_paragraph.runs.append(RtfRun{text, format, false});
}

void RtfReaderBuilder::addImage(const QTextImageFormat &format)
{
    ++m_characters;
    m_paragraph.runs.append(RtfRun{QString(QChar::ObjectReplacementCharacter), format, true});
}

void RtfReaderBuilder::takeParagraph(RtfParagraph &into, const QTextBlockFormat &blockFormat,
                                     const QTextCharFormat &markFormat)
{
    into.blockFormat = blockFormat;
    into.markFormat = markFormat;
    into.runs = std::move(m_paragraph.runs);
    m_paragraph.runs.clear();
}

void RtfReaderBuilder::endParagraph(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat,
                                    bool inTable)
{
    RtfParagraph paragraph;
    takeParagraph(paragraph, blockFormat, markFormat);
    if (inTable) {
        m_inTable = true;
        m_cell.paragraphs.append(std::move(paragraph));
        return;
    }
    if (m_inTable)
        writeTable();
    writeFlowParagraph(paragraph);
}

void RtfReaderBuilder::endCell(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat)
{
    RtfParagraph paragraph;
    takeParagraph(paragraph, blockFormat, markFormat);
    m_inTable = true;
    m_cell.paragraphs.append(std::move(paragraph));
    m_row.cells.append(std::move(m_cell));
    m_cell = Cell();
}

void RtfReaderBuilder::endRow(const RtfRowDefinition &row)
{
    if (!m_cell.paragraphs.isEmpty() || !m_paragraph.runs.isEmpty()) {
        // Text between the last \cell and \row: a cell of its own.
        RtfParagraph paragraph;
        takeParagraph(paragraph, QTextBlockFormat(), QTextCharFormat());
        if (!paragraph.isEmpty())
            m_cell.paragraphs.append(std::move(paragraph));
        m_row.cells.append(std::move(m_cell));
        m_cell = Cell();
    }
    if (m_row.cells.isEmpty())
        return;
    m_inTable = true;
    m_row.definition = row;
    addRow(std::move(m_row));
    m_row = Row();
}

void RtfReaderBuilder::finish(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat, bool inTable)
{
    RtfParagraph paragraph;
    takeParagraph(paragraph, blockFormat, markFormat);
    if (inTable && !paragraph.isEmpty()) {
        m_inTable = true;
        m_cell.paragraphs.append(std::move(paragraph));
        paragraph = RtfParagraph();
    }
    if (m_inTable)
        writeTable();
    // After a paragraph mark there is one more (maybe empty) paragraph; a
    // document that is empty or ends with a table has none.
    if (!m_fresh || !paragraph.isEmpty())
        writeFlowParagraph(paragraph);
}

void RtfReaderBuilder::writeParagraph(QTextCursor &cursor, const RtfParagraph &paragraph, bool intoCurrentBlock,
                                      bool firstInCell)
{
    if (intoCurrentBlock) {
        // The block is new and empty: formats are only set where they say
        // something (a table of many cells fills quicker so).
        if (!paragraph.blockFormat.properties().isEmpty())
            cursor.setBlockFormat(paragraph.blockFormat);
        // The mark's format gives an empty paragraph its height. The
        // character format of a cell's first block is the cell's own format:
        // it is added to, not replaced.
        if (paragraph.isEmpty()) {
            if (firstInCell)
                cursor.mergeBlockCharFormat(paragraph.markFormat);
            else
                cursor.setBlockCharFormat(paragraph.markFormat);
        }
    } else {
        cursor.insertBlock(paragraph.blockFormat, paragraph.markFormat);
    }
    for (const RtfRun &run : paragraph.runs) {
        if (run.image)
            cursor.insertImage(run.format.toImageFormat());
        else
            cursor.insertText(run.text, run.format);
    }
}

void RtfReaderBuilder::writeFlowParagraph(const RtfParagraph &paragraph)
{
    writeParagraph(m_cursor, paragraph, m_fresh, false);
    m_fresh = false;
}

void RtfReaderBuilder::addRow(Row row)
{
    if (row.cells.size() > maxColumns) {
        Cell &last = row.cells[maxColumns - 1];
        for (qsizetype i = maxColumns; i < row.cells.size(); ++i)
            last.paragraphs.append(std::move(row.cells[i].paragraphs));
        row.cells.resize(maxColumns);
    }
    const int columns = std::max(m_columns, int(row.cells.size()));
    if (!m_rows.isEmpty() && qint64(m_rows.size() + 1) * columns > maxCells) {
        writeTable();
        m_inTable = true;
    }
    m_columns = std::max(m_columns, int(row.cells.size()));
    m_rows.append(std::move(row));
}

void RtfReaderBuilder::writeTable()
{
    m_inTable = false;
    if (!m_cell.paragraphs.isEmpty())
        m_row.cells.append(std::move(m_cell));
    m_cell = Cell();
    if (!m_row.cells.isEmpty()) {
        // A row that never got its \row.
        if (!m_rows.isEmpty())
            m_row.definition = m_rows.last().definition;
        Row row = std::move(m_row);
        m_row = Row();
        addRow(std::move(row));
        m_inTable = false;
    }
    m_row = Row();
    if (m_rows.isEmpty())
        return;

    const int rows = int(m_rows.size());
    const int columns = std::max(1, m_columns);
    // The table takes its look from its widest row.
    const Row *widest = &m_rows.first();
    for (const Row &row : m_rows) {
        if (row.cells.size() > widest->cells.size())
            widest = &row;
    }
    const RtfRowDefinition &definition = widest->definition;

    QTextTableFormat tableFormat;
    tableFormat.setCellSpacing(0);
    tableFormat.setCellPadding(definition.gap > 0 ? definition.gap / twipsPerUnit : 0.0);
    tableFormat.setBorder(definition.borders ? 1 : 0);
    tableFormat.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    tableFormat.setBorderCollapse(true);
    tableFormat.setAlignment(definition.alignment);
    if (definition.cells.size() == columns) {
        QList<QTextLength> widths;
        int previous = definition.left;
        for (const RtfCellDefinition &cell : definition.cells) {
            const int width = cell.rightEdge - previous;
            if (width <= 0 || width > 20 * 20000)
                break;
            widths.append(QTextLength(QTextLength::FixedLength, width / twipsPerUnit));
            previous = cell.rightEdge;
        }
        if (widths.size() == columns)
            tableFormat.setColumnWidthConstraints(widths);
    }

    QTextTable *table = m_cursor.insertTable(rows, columns, tableFormat);

    // Cells are merged while the table is still empty (merging moves a
    // cell's content in ways that depend on what is there): horizontal runs
    // first, then vertical ones.
    const int allowedMerges = int(std::min<qint64>(maxMerges, maxMergeWork / (qint64(rows) * columns)));
    int merges = 0;
    for (int r = 0; r < rows && merges < allowedMerges; ++r) {
        const QList<RtfCellDefinition> &cells = m_rows.at(r).definition.cells;
        const int count = std::min(int(cells.size()), columns);
        for (int c = 0; c < count && merges < allowedMerges; ++c) {
            if (!cells.at(c).mergeFirst)
                continue;
            int span = 1;
            while (c + span < count && cells.at(c + span).merged)
                ++span;
            if (span > 1) {
                table->mergeCells(r, c, 1, span);
                ++merges;
            }
        }
    }
    for (int c = 0; c < columns && merges < allowedMerges; ++c) {
        for (int r = 0; r < rows && merges < allowedMerges; ++r) {
            const QList<RtfCellDefinition> &cells = m_rows.at(r).definition.cells;
            if (c >= cells.size() || !cells.at(c).verticalFirst)
                continue;
            int span = 1;
            while (r + span < rows) {
                const QList<RtfCellDefinition> &below = m_rows.at(r + span).definition.cells;
                if (c >= below.size() || !below.at(c).verticalMerged)
                    break;
                ++span;
            }
            if (span > 1) {
                table->mergeCells(r, c, span, 1);
                ++merges;
            }
        }
    }

    for (int r = 0; r < rows; ++r) {
        const Row &row = m_rows.at(r);
        for (int c = 0; c < row.cells.size(); ++c) {
            QTextTableCell cell = table->cellAt(r, c);
            const bool covered = cell.row() != r || cell.column() != c;
            if (!covered) {
                QTextCursor cellCursor = cell.firstCursorPosition();
                bool first = true;
                for (const RtfParagraph &paragraph : row.cells.at(c).paragraphs) {
                    writeParagraph(cellCursor, paragraph, first, first);
                    first = false;
                }
                if (c < row.definition.cells.size() && row.definition.cells.at(c).background.isValid()) {
                    QTextTableCellFormat cellFormat = cell.format().toTableCellFormat();
                    cellFormat.setBackground(row.definition.cells.at(c).background);
                    cell.setFormat(cellFormat);
                }
            } else {
                // The text of a cell that another one covers goes after
                // that one's; empty paragraphs are left out.
                QTextCursor cellCursor = cell.lastCursorPosition();
                for (const RtfParagraph &paragraph : row.cells.at(c).paragraphs) {
                    if (!paragraph.isEmpty())
                        writeParagraph(cellCursor, paragraph, false, false);
                }
            }
        }
    }

    m_rows.clear();
    m_columns = 0;
    m_cursor.movePosition(QTextCursor::End);
    m_fresh = true;
}

}  // namespace rtf
