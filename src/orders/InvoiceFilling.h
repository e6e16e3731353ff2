#pragma once
// Filling a stationery document for one order: every placeholder
// ("<contactname>", "<total>" ...) replaced with the order's and its
// contact's values in a fixed order, and the order's bill of materials put
// in as a table where the first "<itemsordered>" stands. Values go in as
// plain text taking the format of the placeholder they replace; no currency
// symbol or number format is added.
//
// A value that holds its own placeholder is inserted once and the search
// goes on after it, so no order or document can make filling go on for
// ever; a later placeholder inside a value is still replaced by its own,
// later step.
#include <QList>
#include <QPair>
#include <QString>

class Contact;
class Order;
class QTextDocument;

namespace invoices {

// The placeholders and their values for the order, in the order they are
// replaced ("<itemsordered>" excepted). With no contact the nine contact
// placeholders are "". "<contactcompany>" is the contact's company name as
// the order editor shows it.
QList<QPair<QString, QString>> placeholderValues(const Order &order, const Contact *contact);

// Replaces every occurrence of `find` with `replace`. A null `find` changes
// nothing and is logged; a null `replace` is logged and taken as "".
void replaceAllOccurencesOf(QTextDocument &document, const QString &find, const QString &replace);

// With includeBOM off every "<itemsordered>" is removed. Otherwise the first
// one becomes the table the HTML describes and later ones stay; a table that
// cannot be made is logged and leaves the placeholder.
void insertBOMTable(QTextDocument &document, bool includeBOM, const QString &html);

// Every placeholder of the order, then the bill of materials.
void fill(QTextDocument &document, const Order &order, const Contact *contact, const QString &bomHtml);

}  // namespace invoices
