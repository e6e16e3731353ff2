#include "contacts/CompanyEditor.h"

CompanyEditor::CompanyEditor(Quorvel *controller, QObject *parent) : QObject(parent), quorvel(controller) {}
