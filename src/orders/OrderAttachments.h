#pragma once
// The files attached to orders: one folder per order, "Attachments/OrderN"
// in the database bundle (either spelling of the two names found on disk).
// A deleted order's folder is not removed but moved into the bundle's
// holding folder "Deleted Attachments", from where an undone deletion
// takes it back; the holding folder is emptied when the program quits.
#include <QString>
#include <QStringList>

namespace orderAttachments {

// The folder of an order's attachments (it may not exist).
QString folder(int orderId);
// The files and folders attached, counted as a Mac lists a folder: by name
// ignoring case, hidden entries too, a first ".DS_Store" not counted.
int count(int orderId);
// The names of the files and folders attached, in the order count() counts
// them (a first ".DS_Store" left out).
QStringList names(int orderId);
// Takes one attachment off the order: it is moved into the holding folder
// (as a deleted order's are), not destroyed. Refuses a name that is not a
// plain name or not attached. Answers whether it was taken off.
bool remove(int orderId, const QString &name);
// Copies a file, or a folder with everything in it, into the order's
// folder; a name already attached is not copied again, and a folder is
// never copied into itself. Answers whether anything was copied.
bool attach(int orderId, const QString &path);

// What the editor says of that many attachments ("There is 1 attachment").
QString statusText(int attachments);
// The attachment well's image for that many: "" for none, "singlefilewell"
// for one, "doublefilewell" for more.
QString wellImage(int attachments);

// Moves the order's folder into the holding folder; answers where it went,
// "" when the order had none (or it could not be moved, and stays).
QString hold(int orderId);
// Moves a held folder back to the order; nothing when the order has a
// folder again meanwhile. Answers whether it was moved.
bool restore(const QString &held, int orderId);
// Removes the holding folder and everything in it.
void emptyHolding();
// The holding folder.
QString holdingFolder();

}  // namespace orderAttachments
