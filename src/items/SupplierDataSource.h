#pragma once
// The suppliers offered when an item's supplier is chosen: a collection of
// its own over the contacts.
#include "store/kdDataSource.h"

class Quorvel;

class SupplierDataSource : public kdDataSource
{
public:
    explicit SupplierDataSource(Quorvel *controller) : quorvel(controller) {}

private:
    Quorvel *quorvel;
};
