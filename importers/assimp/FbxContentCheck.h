#pragma once
// Assimp 5.2 frees the buffer of an ASCII FBX "Content" string twice when the string is not whole base64
// (a length that is not a multiple of four, or a stray character), so such files are refused before Assimp
// sees them.

#include <string_view>

// False when the text is an ASCII FBX with a "Content:" value that is not whole base64.
bool FbxContentIsWholeBase64(std::string_view text);
