#pragma once
// The company editor: a company's own record (its people are edited in the
// company-contact editor).
#include <QObject>

class Quorvel;

class CompanyEditor : public QObject
{
    Q_OBJECT
public:
    explicit CompanyEditor(Quorvel *controller, QObject *parent = nullptr);

    // Opens the editor on a new company (the editor itself is not built yet).
    void create() {}

private:
    Quorvel *quorvel;
};
