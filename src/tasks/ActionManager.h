#pragma once
// The task list and the task editor.
#include "app/ListManager.h"

class ActionManager : public ListManager
{
    Q_OBJECT
public:
    explicit ActionManager(Quorvel *controller, QObject *parent = nullptr);

    PopUp *filterPopUp;  // "All" / "Incomplete"
};
