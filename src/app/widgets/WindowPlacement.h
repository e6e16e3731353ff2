#pragma once
// Every window remembers its size and place: saved under a key of its own
// in the preferences when it closes or hides, restored when it is made.
#include <QSize>
#include <QString>

class QWidget;

namespace placement {

// Restores the geometry saved under the key, or gives the window the
// default size when there is none. Saves it again whenever the window is
// hidden or closed.
void remember(QWidget *window, const QString &key, const QSize &defaultSize);
void save(const QWidget *window, const QString &key);
// Whether a size and place were saved under the key (the window has been
// placed by the user before).
bool isSaved(const QString &key);

}  // namespace placement
