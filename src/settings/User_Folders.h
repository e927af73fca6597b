// The platform's folders for User.Dat, from the system's standard locations: the user's
// documents folder, the user's data folder (XDG_DATA_HOME on Linux, ~/.local/share by
// default) and the program's own folder.
#pragma once

#include "settings/File_IO.h"

namespace kelmoran {

// The folders as the system gives them. AppData is "" when the system has no writable
// data location; Program is the folder of the running program (the current folder if no
// application object exists yet).
PlatformFolders Query_Platform_Folders();

// Find_User_Folder for this computer: DocumentsFolder, and UserFolder under "Tarnely" in the
// user's data folder or under "User" beside the program.
void Find_User_Folder();

}  // namespace kelmoran
