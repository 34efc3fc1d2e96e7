#pragma once
// What a Maya ASCII file says, command by command, before anything is built: the record the parser fills and the
// scene builder reads. Values stay as the file writes them (UI units, plug names as written).

#include <memory>
#include <string>
#include <variant>
#include <vector>

// A polyFaces value: every face as its boundary loop and hole loops of edge indices (a negative index -1 - e walks
// edge e backwards), and the UV and colour ids given per loop corner.
struct MaPolyFaces {
    struct Loop {
        int Face = 0;
        int EdgeStart = 0; // into Edges
        int EdgeCount = 0;
        bool Hole = false;
    };
    // The ids of one loop's corners in one UV or colour set, from Ids[IdStart] on.
    struct LoopIds {
        int Loop = 0;
        int Set = 0;
        int IdStart = 0;
    };
    int FaceCount = 0;
    std::vector<int> Edges;
    std::vector<Loop> Loops;
    std::vector<LoopIds> UVs;
    std::vector<LoopIds> Colors;
    std::vector<int> Ids;
};

struct MaRequires {
    std::string Plugin;
    std::vector<std::string> NodeTypes;
};

struct MaCurrentUnit {
    std::string Linear;
    std::string Angle;
    std::string Time;
};

struct MaFileReference {
    std::string Path;
    std::string Namespace;
};

struct MaCreateNode {
    std::string Type;
    std::string Name;
    std::string Parent;
    bool Shared = false; // -s: reuse the node of that name when the scene already has it
};

struct MaRename {
    std::string From; // empty: the current node
    std::string To;
};

struct MaSetAttr {
    std::string Plug;
    std::string Type; // the -type data type; empty for plain values
    int Size = -1;    // -s
    std::vector<double> Numbers;
    std::vector<std::string> Strings;
    std::shared_ptr<const MaPolyFaces> Faces;
    bool Xform = false; // a matrix written in its "xform" (transformation) form
};

struct MaAddAttr {
    std::string Node; // empty: the current node
    std::string LongName;
    std::string ShortName;
    std::string AttributeType; // -at
    std::string DataType;      // -dt
    std::string Parent;        // -p
    std::string EnumNames;     // -en "a:b=4:c"
    double Default = 0.0;
    bool HasDefault = false;
    bool Multi = false;
    bool Hidden = false;
};

struct MaConnectAttr {
    std::string Source;
    std::string Destination;
    bool NextAvailable = false; // -na
};

struct MaSelect {
    std::string Name; // the node that setAttr and addAttr without a node address next
};

struct MaParent {
    std::vector<std::string> Children;
    std::string Parent; // empty with World
    bool AddInstance = false;
    bool World = false;
};

using MaCommandData = std::variant<MaRequires, MaCurrentUnit, MaFileReference, MaCreateNode, MaRename, MaSetAttr,
                                   MaAddAttr, MaConnectAttr, MaSelect, MaParent>;

struct MaCommand {
    int Line = 0;
    MaCommandData Data;
};

struct MaRecord {
    std::vector<MaCommand> Commands;
};
