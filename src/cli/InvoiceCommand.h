#pragma once
// quorvel-cli invoice ORDER: one order's invoice filled from its stationery
// (or the plain invoice sheet) exactly as the program's invoice window fills
// it, written as PDF, RTF or plain text. Needs a GUI application object (on
// the offscreen platform) for the layout; no display is used.
#include <QIODevice>
#include <QStringList>

namespace cli {

int invoiceCommand(const QStringList &arguments, QIODevice &out, QIODevice &err);

}  // namespace cli
