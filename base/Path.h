#pragma once
// The system's paths use the backslash ("_data\_config.Xportel"); only the file-system boundary
// (FileSystem.cpp) sees native paths. Paths from the command line or a native API enter through
// FromNativePath.

#include <string>
#include <string_view>

// dir + "\" + name, without doubling a separator; an empty dir gives name.
std::string JoinPath(std::string_view dir, std::string_view name);
// Everything before the last separator ("a\b\c.txt" -> "a\b"); "" when there is none.
std::string DirectoryOf(std::string_view path);
// Everything after the last separator.
std::string FileNameOf(std::string_view path);
// The extension with its dot (".qmesh"), "" when the file name has none.
std::string ExtensionOf(std::string_view path);
std::string WithoutExtension(std::string_view path);
bool IsAbsolutePath(std::string_view path);

// Accepts either separator and answers the system's form.
std::string FromNativePath(std::string_view path);
// The path as people on this host write it, for texts they read (the terminal, the report, the
// page): only the separators change, nothing is looked up on disk, so a path that names no file
// yet, or one from another machine, reads as it was written.
std::string ShownPath(std::string_view path);
// The native form. On a case-sensitive file system every component that exists under another
// case is taken with the case found on disk, so "Textures\Wood.TGA" finds textures/wood.tga.
std::string ToNativePath(std::string_view path);
