// Tables: rows of cells with their edges, spans, borders and backgrounds, so
// that the columns line up in any reader.
#include "platform/richtext/RtfWriterState.h"

#include <QBuffer>
#include <QColor>
#include <QFileInfo>
#include <QPixmap>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

namespace rtf::writing {

// A table inside a table cell: its cells' paragraphs one after the other.
void Writer::collectTable(QTextTable *table, QList<Item> &items)
{
    for (int row = 0; row < table->rows(); ++row) {
        for (int column = 0; column < table->columns(); ++column) {
            const QTextTableCell cell = table->cellAt(row, column);
            if (cell.row() == row && cell.column() == column)
                collectCell(cell, items);
        }
    }
}

// The paragraphs of a cell; tables inside it are flattened.
void Writer::collectCell(const QTextTableCell &cell, QList<Item> &items)
{
    for (QTextFrame::iterator it = cell.begin(); !it.atEnd(); ++it) {
        if (QTextFrame *child = it.currentFrame()) {
            if (auto *inner = qobject_cast<QTextTable *>(child))
                collectTable(inner, items);
            else
                collect(child, items, true);
        } else if (it.currentBlock().isValid()) {
            items.append(Item{it.currentBlock(), nullptr});
        }
    }
}

// Column right edges in twips from the table's width constraints: fixed
// widths as given, percentages of the table's width, and what is left
// shared equally by the others.
QList<int> Writer::columnEdges(const QTextTable *table) const
{
    const QTextTableFormat format = table->format();
    const int columns = table->columns();
    int tableWidth = kDefaultTableWidthTwips;
    if (format.width().type() == QTextLength::FixedLength && format.width().rawValue() > 0)
        tableWidth = twips(format.width().rawValue());
    else if (format.width().type() == QTextLength::PercentageLength && format.width().rawValue() > 0)
        tableWidth = qRound(kDefaultTableWidthTwips * qMin<qreal>(format.width().rawValue(), 100.0) / 100.0);

    QList<QTextLength> constraints = format.columnWidthConstraints();
    QList<int> widths(columns, 0);
    int given = 0;
    int open = 0;
    for (int c = 0; c < columns; ++c) {
        const QTextLength length = c < constraints.size() ? constraints.at(c) : QTextLength();
        if (length.type() == QTextLength::FixedLength && length.rawValue() > 0)
            widths[c] = twips(length.rawValue());
        else if (length.type() == QTextLength::PercentageLength && length.rawValue() > 0)
            widths[c] = qRound(tableWidth * qMin<qreal>(length.rawValue(), 100.0) / 100.0);
        if (widths[c] > 0)
            given += widths[c];
        else
            ++open;
    }
    const int share = open > 0 ? qMax(360, (tableWidth - given) / open) : 0;
    QList<int> edges;
    int edge = 0;
    for (int c = 0; c < columns; ++c) {
        edge += widths[c] > 0 ? widths[c] : share;
        edges.append(edge);
    }
    return edges;
}

void Writer::writeTable(QTextTable *table)
{
    const QTextTableFormat format = table->format();
    const QList<int> edges = columnEdges(table);
    const bool borders = format.border() > 0 && format.borderStyle() != QTextFrameFormat::BorderStyle_None;
    const int borderWidth = qBound(1, twips(format.border()), 75);

    for (int row = 0; row < table->rows(); ++row) {
        // Every column has a cell of its own in every row, so that the
        // columns line up in any reader: a cell spanning columns starts
        // with \clmgf and goes on in \clmrg cells, a cell spanning rows
        // starts with \clvmgf and goes on in \clvmrg cells below.
        QList<QTextTableCell> cells;
        for (int column = 0; column < table->columns(); ++column)
            cells.append(table->cellAt(row, column));

        m_body.word("trowd");
        m_body.word("trgaph", twips(qMax<qreal>(0, format.cellPadding())));
        m_body.word("trleft", 0);
        const Qt::Alignment horizontal = format.alignment() & Qt::AlignHorizontal_Mask;
        if (horizontal & Qt::AlignHCenter)
            m_body.word("trqc");
        else if (horizontal & Qt::AlignRight)
            m_body.word("trqr");
        m_body.newline();
        for (int column = 0; column < cells.size(); ++column) {
            const QTextTableCell &cell = cells.at(column);
            if (cell.isValid()) {
                if (cell.row() != row)
                    m_body.word("clvmrg");
                else if (cell.rowSpan() > 1)
                    m_body.word("clvmgf");
                if (cell.column() != column)
                    m_body.word("clmrg");
                else if (cell.columnSpan() > 1)
                    m_body.word("clmgf");
            }
            if (borders) {
                for (const char *side : {"clbrdrt", "clbrdrl", "clbrdrb", "clbrdrr"}) {
                    m_body.word(side);
                    m_body.word("brdrs");
                    m_body.word("brdrw", borderWidth);
                }
            }
            const QTextTableCellFormat cellFormat = cell.format().toTableCellFormat();
            if (cell.isValid() && shows(cellFormat, QTextFormat::BackgroundBrush))
                m_body.word("clcbpat", colourIndex(cellFormat.background().color()));
            m_body.word("cellx", edges.at(column));
            m_body.newline();
        }
        for (int column = 0; column < cells.size(); ++column) {
            const QTextTableCell &cell = cells.at(column);
            QList<Item> items;
            if (cell.isValid() && cell.row() == row && cell.column() == column)
                collectCell(cell, items);
            if (items.isEmpty()) {
                m_body.word("pard");
                m_body.word("intbl");
                m_body.word("cell");
                m_body.newline();
                continue;
            }
            for (qsizetype i = 0; i < items.size(); ++i)
                writeParagraph(items.at(i).block, true, i + 1 == items.size() ? End::Cell : End::Paragraph);
        }
        m_body.word("row");
        m_body.newline();
    }
}

}  // namespace rtf::writing
