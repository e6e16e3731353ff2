// Fuzz driver of the property-list readers: random damage to sample
// documents, read by the quick scanner (with the full reader behind it) and
// by the full reader alone; the two must agree on every document, and
// nothing may crash or hang. Build with -DQUORVEL_SANITIZE=ON to have the
// sanitizers watch the memory.
//
//   fuzz_property_list ROUNDS ROOT_KEY FILE...
//
// For example, with the samples of the tests:
//   fuzz_property_list 100000 orders tests/data/plist/*.xml
#include "RecordReadings.h"

#include <QCoreApplication>
#include <QFile>
#include <QRandomGenerator>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "usage: fuzz_property_list ROUNDS ROOT_KEY FILE...\n");
        return 2;
    }
    const long rounds = std::atol(argv[1]);
    const QString rootKey = QString::fromLocal8Bit(argv[2]);
    QList<QByteArray> corpus;
    for (int i = 3; i < argc; ++i) {
        QFile file(QString::fromLocal8Bit(argv[i]));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", argv[i]);
            return 1;
        }
        corpus << file.readAll();
    }

    QRandomGenerator random(20260115);
    const char alphabet[] = "<>/&;#x!-[]?=\"' \t\r\n\x01\x80\xC3\xA9\xFF"
                            "abdeikgnrstyACDT0123456789";
    const int letters = int(sizeof alphabet - 1);
    long readable = 0;
    for (long round = 0; round < rounds; ++round) {
        QByteArray document = corpus.at(random.bounded(int(corpus.size())));
        const int changes = 1 + random.bounded(6);
        for (int c = 0; c < changes; ++c) {
            const qsizetype at = random.bounded(int(document.size()) + 1);
            switch (random.bounded(5)) {
            case 0:
                if (at < document.size())
                    document[at] = alphabet[random.bounded(letters)];
                break;
            case 1:
                document.insert(at, alphabet[random.bounded(letters)]);
                break;
            case 2:
                document.remove(at, 1 + random.bounded(12));
                break;
            case 3:
                document.insert(at, document.mid(random.bounded(int(document.size()) + 1), random.bounded(40)));
                break;
            default:
                document.truncate(at);
                break;
            }
        }
        const testlib::QuickAndFull readings = testlib::readQuickAndFull(document, rootKey);
        platform::plist::readValue(document);
        if (!readings.agree()) {
            QFile out(QStringLiteral("fuzz-disagreement.xml"));
            if (out.open(QIODevice::WriteOnly))
                out.write(document);
            std::fprintf(stderr, "round %ld: the readers disagree; the document is in fuzz-disagreement.xml\n%s\n",
                         round, qPrintable(readings.description()));
            return 1;
        }
        readable += readings.quick.ok ? 1 : 0;
    }
    std::printf("%ld documents, %ld of them readable, the readers agreed on all\n", rounds, readable);
    return 0;
}
