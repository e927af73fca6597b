// The folder of User.Dat on this computer: the user's data folder, or beside the program.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdlib>
#include <string>

#include "settings/User_Folders.h"

namespace kelmoran {
namespace {

TEST(User_Folders, TarnelyUnderTheUsersDataFolder) {
    const char* saved = std::getenv("XDG_DATA_HOME");
    const std::string keep = saved ? saved : "";
    ::setenv("XDG_DATA_HOME", "/tmp/kelmoran_xdg_data", 1);
    Find_User_Folder();
    EXPECT_EQ(UserFolder, "/tmp/kelmoran_xdg_data/Tarnely/");
    EXPECT_EQ(User_Dat_Path(), "/tmp/kelmoran_xdg_data/Tarnely/User.Dat");
    const PlatformFolders f = Query_Platform_Folders();
    EXPECT_EQ(f.Program, QCoreApplication::applicationDirPath().toStdString());
    if (saved) ::setenv("XDG_DATA_HOME", keep.c_str(), 1);
    else ::unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace kelmoran
