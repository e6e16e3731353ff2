#!/usr/bin/env python3
"""Write a first-generation database file (the older four-level XML dialect
that quorvel-cli import-legacy and the program's import read), for the import
benchmark and by hand.

Usage: make-legacy-database.py FILE [--orders N] [--seed S]

Contacts, stock items, lines, tasks and bills scale with the number of
orders (20k contacts, 10k items, 300k lines, 20k tasks, 20k bills per 100k
orders), as in the current database's generator. Values are plain ASCII, as
the dialect requires; the same seed always gives the same file.
"""
import argparse
import random

FIRST = ["Jane", "John", "Ann", "Peter", "Maria", "Ahmed", "Li", "Olga", "Tom", "Sara"]
LAST = ["Smith", "van Dijk", "Okafor", "Garcia", "Nguyen", "Brown", "Muller", "Rossi", "O'Neill"]
STREETS = ["High St", "Mill Lane", "Station Rd", "Church Walk", "Market Sq"]
TOWNS = ["Ashford", "Bexley", "Carlow", "Dunmore", "Elmstead"]
PRODUCTS = ["Widget", "Bolt", "Bracket", "Panel", "Cable", "Hinge"]


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def record(out, element, fields):
    out.append("<%s>" % element)
    for name, value in fields:
        out.append("<%s>%s</%s>" % (name, escaped(str(value)), name))
    out.append("</%s>\n" % element)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("file")
    parser.add_argument("--orders", type=int, default=1000)
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    rng = random.Random(args.seed)
    orders = args.orders
    contacts = max(1, orders // 5)
    items = max(1, orders // 10)
    out = ["<quorvel>\n<contacts>\n"]
    for i in range(1, contacts + 1):
        record(out, "contact", [("id", i), ("name", "%s %s" % (rng.choice(FIRST), rng.choice(LAST))),
                                ("add1", "%d %s" % (rng.randint(1, 200), rng.choice(STREETS))),
                                ("add2", rng.choice(TOWNS)), ("postcode", "AB%d 1CD" % rng.randint(1, 99)),
                                ("phone", "01632 %06d" % rng.randint(0, 999999)), ("kind", "Individual"),
                                ("type", "Customer")])
    out.append("</contacts>\n<products>\n")
    for i in range(1, items + 1):
        record(out, "product", [("id", i), ("code", "ITM%d" % i), ("item", "%s %d" % (rng.choice(PRODUCTS), i)),
                                ("qty", rng.randint(0, 500)), ("price", "%.2f" % rng.uniform(1, 100))])
    out.append("</products>\n<orders>\n")
    for i in range(1, orders + 1):
        value = rng.uniform(10, 5000)
        record(out, "order", [("id", i), ("ordernum", "INV%d" % i), ("title", "Job %d" % i),
                              ("date", "%02d/%02d/%02d" % (rng.randint(1, 28), rng.randint(1, 12), rng.randint(5, 26))),
                              ("status", rng.choice(["Quote", "Order", "Invoiced"])), ("value", "%.2f" % value),
                              ("tax", "%.2f" % (value * 0.175)), ("valuewithtax", "%.2f" % (value * 1.175)),
                              ("balance", "%.2f" % (value * 1.175)), ("contactId", rng.randint(0, contacts))])
    out.append("</orders>\n<materials>\n")
    for i in range(1, orders * 3 + 1):
        product = rng.randint(1, items)
        record(out, "material", [("id", i), ("order", rng.randint(1, orders)), ("product", product),
                                 ("item", "%s %d" % (rng.choice(PRODUCTS), product)), ("qty", rng.randint(1, 9)),
                                 ("cost", "%.2f" % rng.uniform(1, 100)), ("total", "%.2f" % rng.uniform(1, 900))])
    out.append("</materials>\n<bills>\n")
    for i in range(1, contacts + 1):
        record(out, "bill", [("id", i), ("name", "Supplier %d" % i), ("amount", "%.2f" % rng.uniform(5, 900)),
                             ("datepaid", "%02d/%02d/%02d" % (rng.randint(1, 28), rng.randint(1, 12), rng.randint(5, 26)))])
    out.append("</bills>\n<actions>\n")
    for i in range(1, contacts + 1):
        record(out, "action", [("id", i), ("title", "Task %d" % i), ("rate", "%.2f" % rng.uniform(10, 90)),
                               ("complete", rng.choice(["YES", "NO"]))])
    out.append("</actions>\n</quorvel>\n")
    with open(args.file, "w", encoding="ascii") as handle:
        handle.write("".join(out))


if __name__ == "__main__":
    main()
