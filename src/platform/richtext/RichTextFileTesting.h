#pragma once
// A way for tests to make one step of saving a package fail, so that what
// is left on disk after each kind of failure can be checked.

namespace RichTextFile::testing {

enum class Failure {
    None,
    WriteFile,  // writing a file into the temporary folder
    RenameAside,  // moving the old package out of the way
    RenameIntoPlace,  // moving the new package to its name
};

// The next package save fails at this step; the injection is used once.
void injectFailure(Failure failure);

}  // namespace RichTextFile::testing
