#pragma once
// The stationery a business prints its documents on: rich-text packages
// (.rtfd) in the "stationary" folder of the support folder, which the user
// edits in any rich-text editor, and the header and footer of the plain
// invoice sheet beside it. Installing puts the shipped "Invoice" and
// "Reminder" there when they are missing (an "Invoice" the user made in
// earlier versions, "customInvoice.rtfd", is carried over instead of the
// shipped one); documents already there are never touched.
//
// Every name of a document comes from the folder or from the command line,
// so a name that would leave the folder is refused.
#include <QString>
#include <QStringList>

namespace stationery {

// <support>/Quorvel/stationary (the folder's name is spelled so on disk).
QString folder();
// The package of a document: <folder>/NAME.rtfd.
QString documentPath(const QString &name);
// Whether NAME can only name a document inside the folder: not empty, no
// folder separator, not "." or "..", no NUL.
bool isSafeName(const QString &name);

// Makes the support and stationery folders when missing and copies the
// "Invoice" and "Reminder" documents into it when they are not there. What
// could not be done is logged. Answers whether the folder is there.
bool install();
// The documents to choose from: every entry of the folder whose name does
// not start with ".", without its extension, in alphabetical order.
QStringList names();

// The plain invoice sheet's header and footer: the single file (.rtf) when
// it exists, else the package (.rtfd).
QString headerPath();
QString footerPath();
// Copies the shipped header and footer packages into the support folder
// when neither form of them exists there.
void createHeaderAndFooterIfNecessary();

// Copies a package (a folder, also one of the program's resources) to a new
// place, leaving every copied file writable by the user. Answers false, with
// nothing left at `to`, when it could not.
bool copyPackage(const QString &from, const QString &to);

}  // namespace stationery
