#ifndef OAKIT_CELLVIEWFILES_H
#define OAKIT_CELLVIEWFILES_H

// The directories and files of a library, apart from what is in them. Nothing here needs access to the library or takes
// it.
//
//   <library>/<cell>/<view>/master.tag     names the primary file
//   <library>/<cell>/<view>/layout.oa      the primary file; its name tells the view type
//   <library>/<cell>/<view>/*.cdslck       edit locks

#include <string>
#include <vector>

namespace OpenAccess_4 {
namespace kit {

constexpr const char *kLibraryFile = ".oalib";
constexpr const char *kMasterTagFile = "master.tag";
constexpr const char *kManagementDataFile = "data.dm";
constexpr const char *kTechFile = "tech.db";

bool isDirectory(const std::string &path);
// False for what is no directory, too.
bool isEmptyDirectory(const std::string &path);
bool isRegularFile(const std::string &path);
// 0 when there is no such file.
unsigned long long fileSizeBytes(const std::string &path);
// Absolute, from the working directory, without "." and doubled slashes; ".." and symbolic links are resolved only when
// there is a "..".
std::string absolutePath(const std::string &path);
// Both exist and are the same directory or file.
bool isSamePlace(const std::string &a, const std::string &b);

// Sub-directories whose names can be those of cells or views, in byte order. Raises oacFileGetInfoFailed when the
// directory cannot be read.
std::vector<std::string> namedDirectories(const std::string &directory);
// Ordinary files in byte order; locks and hidden files are left out.
std::vector<std::string> visibleFiles(const std::string &directory);

// The name of the primary file in a cell view's directory: the file that master.tag names; else the only file there;
// else verilog.v or vhdl.vhd. Empty when there is none, and then the directory is no cell view.
std::string findPrimaryFile(const std::string &directory);

// Makes a cell view with an empty primary file: the cell's directory and the view's where they are missing,
// `master.tag`, the file. Returns what was made, in that order. Raises oacDirCreateFailed or what writing raises; then
// nothing is left behind.
std::vector<std::string> createCellViewFiles(const std::string &libraryPath, const std::string &cellDiskName,
                                             const std::string &viewDiskName, const std::string &primaryFile);
// Raises oacDirCreateFailed. False when it exists already.
bool createDirectory(const std::string &path);
// With everything in it; links are removed, not followed. Raises oacOSError.
void removeDirectory(const std::string &path);

} // namespace kit
} // namespace OpenAccess_4

#endif
