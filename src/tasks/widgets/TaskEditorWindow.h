#pragma once
// The task editor: one window over the task manager's editor outlets. The
// title and details, the start and end dates (in the user's date order,
// which the fields show as a hint) and times, the rate and units with the
// two calculate buttons and the line that says when a figure cannot be
// worked out, and the alarm and done check boxes. OK stores the task;
// Cancel, Escape and the close box abandon it. The window remembers its
// size and place.
#include "app/widgets/EditorDialog.h"

class ActionManager;

class TaskEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    explicit TaskEditorWindow(ActionManager &manager, QWidget *parent = nullptr);
    ~TaskEditorWindow() override;

private:
    ActionManager &actions;
};
