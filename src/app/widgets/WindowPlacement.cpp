#include "app/widgets/WindowPlacement.h"

#include "store/PrefsController.h"

#include <QEvent>
#include <QObject>
#include <QSettings>
#include <QWidget>

namespace placement {

namespace {

class Saver : public QObject
{
public:
    Saver(QWidget *window, const QString &key)
        : QObject(window),
          settingsKey(key)
    { }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Hide || event->type() == QEvent::Close)
            save(static_cast<QWidget *>(watched), settingsKey);
        return false;
    }

private:
    QString settingsKey;
};

}  // namespace

void remember(QWidget *window, const QString &key, const QSize &defaultSize)
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    const QByteArray geometry = settings.value(key).toByteArray();
    if (geometry.isEmpty() || !window->restoreGeometry(geometry))
        window->resize(defaultSize);
    window->installEventFilter(new Saver(window, key));
}

bool isSaved(const QString &key)
{
    const QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    return !settings.value(key).toByteArray().isEmpty();
}

void save(const QWidget *window, const QString &key)
{
    QSettings settings(PrefsController::settingsName(), PrefsController::settingsName());
    settings.setValue(key, window->saveGeometry());
}

}  // namespace placement
