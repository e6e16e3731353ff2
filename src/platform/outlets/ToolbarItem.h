#pragma once
// One item of a toolbar (the main window's, an invoice window's) as its
// controller builds it: the widget layer turns it into a tool button. An
// item without an image has no label and no action either (it is inert).
#include <QString>
#include <functional>

struct ToolbarItem
{
    QString identifier;
    QString image;  // resource name of the image ("contact" ...); "" when none
    QString label;
    std::function<void()> action;  // empty when the item is inert
};
