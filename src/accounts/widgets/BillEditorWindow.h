#pragma once
// The bill editor: one window over the accounts manager's editor outlets.
// The bill's number, payee, date paid, amount, category (the user's
// categories and every category met on a bill opened here) and details.
// OK stores the bill; Cancel, Escape and the close box abandon the editor.
// The window remembers its size and place.
#include "app/widgets/EditorDialog.h"

class BillManager;

class BillEditorWindow : public EditorDialog
{
    Q_OBJECT
public:
    explicit BillEditorWindow(BillManager &manager, QWidget *parent = nullptr);
};
