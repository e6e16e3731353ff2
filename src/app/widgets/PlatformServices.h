#pragma once
// The platform's real services behind the program's seams: modal alerts as
// message boxes, open and save panels as file dialogs, the workspace
// (default applications for URLs and files) and the clipboard.
namespace platformServices {

void install();

}  // namespace platformServices
