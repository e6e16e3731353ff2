#pragma once
// Every path the program uses, derived from the application-support folder
// and the home folder. The application-support folder defaults to
// $XDG_DATA_HOME, else ~/.local/share; `--data-dir DIR` replaces it.
#include <QString>

namespace platform::paths {

// Overrides the application-support folder (an empty text returns to the
// default). Also used by tests, which point it at a temporary folder.
void setApplicationSupportDir(const QString &dir);
QString applicationSupportDir();

// What `--data-dir DIR` does for the program and the command line: DIR
// becomes the application-support folder, and the preferences are kept in
// preferencesDir() under it from then on (not in the user's own).
void useDataDir(const QString &dir);
QString preferencesDir();  // <support>/Quorvel/preferences

// The home folder ("~"); tests may point it elsewhere too.
void setHomeDir(const QString &dir);
QString homeDir();
// A leading "~" or "~/" replaced by the home folder.
QString expandTilde(const QString &path);

QString quorvelDir();  // <support>/Quorvel
QString bundleDir();  // <support>/Quorvel/quorveldatabase.qvldb
QString bundleFile(const QString &name);  // a member of the bundle
QString itemImagesDir();  // <bundle>/ItemImages
QString itemImagePath(int itemId);  // <bundle>/ItemImages/<id>.tiff
QString attachmentsDir();  // <bundle>/Attachments (either spelling found on disk)
QString reportsDir();  // <support>/Quorvel/reports (either spelling found on disk)
QString legacyDatabaseFile();  // ~/Quorvel/quorveldatabase.xml
QString legacyAttachmentsDir();  // ~/Library/Quorvel/Attachments

// Whether a name that came from outside (a file, the command line) can only
// name something inside its folder: not empty, not "." or "..", and without
// "/", "\\" or NUL.
bool isPlainName(const QString &name);

// A child folder of `parent` whose name matches `name` ignoring letter case:
// the existing one when there is one, else parent/name.
QString caseInsensitiveChild(const QString &parent, const QString &name);

}  // namespace platform::paths
