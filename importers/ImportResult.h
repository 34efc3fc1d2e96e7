#pragma once
// The answer of an importer: success or the reason for failure, repeated oddities counted once each, and the
// animation clips laid out on the time line so that they can become animation entries.

#include <string>
#include <vector>

struct ImportWarning {
    std::string Text;
    int Count = 0;
    int Line = 0; // where in the file it was first met; 0 when the warning is not about a line

    // "line 12: <text> (3 times in all)", as the command line prints it.
    std::string Describe() const;
};

struct ImportedClip {
    std::string Name;
    double StartFrame = 0.0; // in the scene's time unit
    double EndFrame = 0.0;
};

struct ImportResult {
    bool Ok = false;
    std::string Error;
    std::vector<ImportWarning> Warnings;
    std::vector<ImportedClip> Clips;

    void Warn(const std::string& text, int line = 0);
    int WarningCount() const;
};

struct ImportOptions {
    // Where textures embedded in the scene file are written; empty: next to the scene file, in a folder named
    // after it ("<scene>_textures").
    std::string EmbeddedTextureFolder;
    bool WriteEmbeddedTextures = true;
};
