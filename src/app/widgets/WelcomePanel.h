#pragma once
// The panel shown on a first start: a short welcome, the three optional
// modules to switch on, and "Don't show this again". Its button ends the
// modal run; the PrefsController reads the boxes afterwards.
#include <QDialog>

class PrefsController;

class WelcomePanel : public QDialog
{
    Q_OBJECT
public:
    explicit WelcomePanel(PrefsController &controller, QWidget *parent = nullptr);
};
