#include "importers/mayaascii/ParseMayaAscii.h"

#include "importers/mayaascii/MayaAsciiLexer.h"

#include "base/Number.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

// One command's tokens after its name, read front to back.
class Arguments {
public:
    explicit Arguments(const MaStatement& statement) : m_tokens(statement.Tokens), m_at(1) {}

    bool Done() const { return m_at >= m_tokens.size(); }
    const MaToken& Peek() const { return m_tokens[m_at]; }
    const MaToken& Take() { return m_tokens[m_at++]; }
    void Skip() { ++m_at; }

    // Maya's flags are a '-' and a letter; "-1.5" is a number.
    bool AtFlag() const
    {
        if (Done() || Peek().Kind != MaTokenKind::Word || Peek().Text.size() < 2 || Peek().Text[0] != '-')
            return false;
        const char c = Peek().Text[1];
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    }

    // The argument of a flag: any word or string.
    bool TakeText(std::string& text)
    {
        if (Done() || Peek().Kind == MaTokenKind::Punctuation)
            return false;
        text = std::string(Take().Text);
        return true;
    }

private:
    const std::vector<MaToken>& m_tokens;
    size_t m_at;
};

bool ParseValue(std::string_view word, double& value)
{
    if (word == "yes" || word == "on" || word == "true") {
        value = 1.0;
        return true;
    }
    if (word == "no" || word == "off" || word == "false") {
        value = 0.0;
        return true;
    }
    return ParseFloat(word, value);
}

bool ParseInteger(const MaToken& token, int& value)
{
    return token.Kind == MaTokenKind::Word && ParseInt(token.Text, value);
}

bool IsOneOf(std::string_view flag, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), flag) != names.end();
}

struct Context {
    MaRecord& Record;
    ImportResult& Result;
    int Line = 0;

    void Add(MaCommandData data) { Record.Commands.push_back({Line, std::move(data)}); }
    bool Refuse(const std::string& command, const std::string& why)
    {
        Result.Warn(command + ": " + why + "; the command is passed over", Line);
        return false;
    }
};

bool UnknownFlag(Context& context, const std::string& command, std::string_view flag)
{
    return context.Refuse(command, "unknown flag " + std::string(flag));
}

// A polyFaces value: "f n e0 e1 ..." starts a face, "h n ..." adds a hole to it, "mu set n id..." and
// "mc set n id..." give the ids of the loop just read in a UV or colour set ("fc n id..." is the older colour form).
bool ParsePolyFaces(Arguments& args, Context& context, MaPolyFaces& faces)
{
    auto number = [&](int& value) { return !args.Done() && ParseInteger(args.Take(), value); };
    while (!args.Done()) {
        const MaToken& keyword = args.Take();
        const std::string word(keyword.Text);
        int count = 0;
        int set = 0;
        if (word == "f" || word == "h") {
            if (!number(count) || count < 0 || (word == "h" && faces.Loops.empty()))
                return context.Refuse("setAttr", "a polyFaces value has a malformed '" + word + "' entry");
            if (word == "f")
                ++faces.FaceCount;
            faces.Loops.push_back({faces.FaceCount - 1, static_cast<int>(faces.Edges.size()), count, word == "h"});
            for (int i = 0; i < count; ++i) {
                int edge = 0;
                if (!number(edge))
                    return context.Refuse("setAttr", "a polyFaces value has fewer edges than it announces");
                faces.Edges.push_back(edge);
            }
        } else if (word == "mu" || word == "mc" || word == "fc") {
            if ((word != "fc" && !number(set)) || !number(count) || faces.Loops.empty() || set < 0 ||
                count != faces.Loops.back().EdgeCount)
                return context.Refuse("setAttr", "a polyFaces value has a malformed '" + word + "' entry");
            auto& list = word == "mu" ? faces.UVs : faces.Colors;
            list.push_back({static_cast<int>(faces.Loops.size()) - 1, set, static_cast<int>(faces.Ids.size())});
            for (int i = 0; i < count; ++i) {
                int id = 0;
                if (!number(id))
                    return context.Refuse("setAttr", "a polyFaces value has fewer ids than it announces");
                faces.Ids.push_back(id);
            }
        } else {
            return context.Refuse("setAttr", "a polyFaces value has the unknown entry '" + word + "'");
        }
    }
    return true;
}

bool ParseSetAttr(Arguments& args, Context& context)
{
    MaSetAttr set;
    // Flags come before the plug, and Maya writes -type after it.
    auto flags = [&]() {
        while (args.AtFlag()) {
            const std::string flag(args.Take().Text);
            std::string value;
            if (IsOneOf(flag, {"-av", "-alteredValue", "-c", "-clamp"}))
                continue;
            if (!IsOneOf(flag, {"-s", "-size", "-l", "-lock", "-k", "-keyable", "-cb", "-channelBox", "-ch",
                                "-capacityHint", "-ca", "-caching", "-type", "-typ"}))
                return UnknownFlag(context, "setAttr", flag);
            if (!args.TakeText(value))
                return context.Refuse("setAttr", "the flag " + flag + " has no value");
            if ((flag == "-s" || flag == "-size") && (!ParseInt(value, set.Size) || set.Size < 0))
                return context.Refuse("setAttr", "the size '" + value + "' is not a count");
            if (flag == "-type" || flag == "-typ")
                set.Type = value;
        }
        return true;
    };
    if (!flags())
        return false;
    if (args.Done() || args.Peek().Kind != MaTokenKind::String)
        return context.Refuse("setAttr", "the attribute is not named");
    set.Plug = std::string(args.Take().Text);
    if (!flags())
        return false;
    // A long face list is split over several setAttr commands, of which only the first names the data type.
    if (set.Type.empty() && !args.Done() && args.Peek().Kind == MaTokenKind::Word &&
        (args.Peek().Text == "f" || args.Peek().Text == "h"))
        set.Type = "polyFaces";
    if (set.Type == "polyFaces") {
        auto faces = std::make_shared<MaPolyFaces>();
        if (!ParsePolyFaces(args, context, *faces))
            return false;
        set.Faces = std::move(faces);
    } else if (set.Type == "matrix" && !args.Done() && args.Peek().Kind == MaTokenKind::String &&
               args.Peek().Text == "xform") {
        set.Xform = true;
        args.Skip();
    }
    while (!set.Faces && !args.Done()) {
        const MaToken& token = args.Take();
        double value = 0.0;
        if (token.Kind == MaTokenKind::Punctuation)
            continue;
        if (token.Kind == MaTokenKind::String)
            set.Strings.emplace_back(token.Text);
        else if (ParseValue(token.Text, value))
            set.Numbers.push_back(value);
        else if (set.Type.empty())
            return context.Refuse("setAttr", "'" + std::string(token.Text) + "' is not a number");
        else
            set.Strings.emplace_back(token.Text);
    }
    context.Add(std::move(set));
    return true;
}

bool ParseCreateNode(Arguments& args, Context& context)
{
    MaCreateNode create;
    if (!args.TakeText(create.Type) || create.Type.starts_with("-"))
        return context.Refuse("createNode", "no node type is given");
    while (!args.Done()) {
        if (!args.AtFlag())
            return context.Refuse("createNode", "unexpected '" + std::string(args.Peek().Text) + "'");
        const std::string flag(args.Take().Text);
        if (IsOneOf(flag, {"-s", "-shared"})) {
            create.Shared = true;
        } else if (IsOneOf(flag, {"-ss", "-skipSelect"})) {
        } else if (IsOneOf(flag, {"-n", "-name"})) {
            if (!args.TakeText(create.Name))
                return context.Refuse("createNode", "the flag -n has no name");
        } else if (IsOneOf(flag, {"-p", "-parent"})) {
            if (!args.TakeText(create.Parent))
                return context.Refuse("createNode", "the flag -p has no parent");
        } else {
            return UnknownFlag(context, "createNode", flag);
        }
    }
    context.Add(std::move(create));
    return true;
}

bool ParseAddAttr(Arguments& args, Context& context)
{
    MaAddAttr add;
    while (!args.Done()) {
        if (!args.AtFlag()) {
            if (!args.TakeText(add.Node))
                args.Skip();
            continue;
        }
        const std::string flag(args.Take().Text);
        if (IsOneOf(flag, {"-m", "-multi"})) {
            add.Multi = true;
            continue;
        }
        if (IsOneOf(flag, {"-uac", "-usedAsColor", "-uaf", "-usedAsFilename", "-uap", "-usedAsProxy", "-hnv",
                           "-hxv", "-hsn", "-hsx"}))
            continue;
        std::string value;
        if (!args.TakeText(value))
            return context.Refuse("addAttr", "the flag " + flag + " has no value");
        double number = 0.0;
        if (IsOneOf(flag, {"-ln", "-longName"}))
            add.LongName = value;
        else if (IsOneOf(flag, {"-sn", "-shortName"}))
            add.ShortName = value;
        else if (IsOneOf(flag, {"-at", "-attributeType"}))
            add.AttributeType = value;
        else if (IsOneOf(flag, {"-dt", "-dataType"}))
            add.DataType = value;
        else if (IsOneOf(flag, {"-p", "-parent"}))
            add.Parent = value;
        else if (IsOneOf(flag, {"-en", "-enumName"}))
            add.EnumNames = value;
        else if (IsOneOf(flag, {"-h", "-hidden"}))
            add.Hidden = ParseValue(value, number) && number != 0.0;
        else if (IsOneOf(flag, {"-dv", "-defaultValue"})) {
            if (!ParseValue(value, add.Default))
                return context.Refuse("addAttr", "the default '" + value + "' is not a number");
            add.HasDefault = true;
        } else if (!IsOneOf(flag, {"-nn", "-niceName", "-ci", "-cachedInternally", "-is", "-internalSet", "-k",
                                   "-keyable", "-s", "-storable", "-r", "-readable", "-w", "-writable", "-min",
                                   "-minValue", "-max", "-maxValue", "-smn", "-softMinValue", "-smx", "-softMaxValue",
                                   "-nc", "-numberOfChildren", "-ct", "-category", "-bt", "-binaryTag", "-im",
                                   "-indexMatters", "-fnn", "-fromPlugin", "-con", "-connectable", "-iu"}))
            return UnknownFlag(context, "addAttr", flag);
    }
    if (add.LongName.empty() && add.ShortName.empty())
        return context.Refuse("addAttr", "the attribute has no name");
    if (add.LongName.empty())
        add.LongName = add.ShortName;
    context.Add(std::move(add));
    return true;
}

bool ParseConnectAttr(Arguments& args, Context& context)
{
    MaConnectAttr connect;
    std::vector<std::string> plugs;
    while (!args.Done()) {
        if (!args.AtFlag()) {
            std::string plug;
            if (!args.TakeText(plug))
                return context.Refuse("connectAttr", "unexpected '" + std::string(args.Peek().Text) + "'");
            plugs.push_back(plug);
            continue;
        }
        const std::string flag(args.Take().Text);
        if (IsOneOf(flag, {"-na", "-nextAvailable"}))
            connect.NextAvailable = true;
        else if (IsOneOf(flag, {"-l", "-lock", "-rd", "-referenceDest"}))
            args.Skip();
        else if (!IsOneOf(flag, {"-f", "-force"}))
            return UnknownFlag(context, "connectAttr", flag);
    }
    if (plugs.size() != 2)
        return context.Refuse("connectAttr", "it takes a source and a destination");
    connect.Source = plugs[0];
    connect.Destination = plugs[1];
    context.Add(std::move(connect));
    return true;
}

// The positional arguments of a command whose flags are known: names and whether each flag takes a value.
bool Positionals(Arguments& args, Context& context, const std::string& command,
                 std::initializer_list<std::string_view> flagsWithValue,
                 std::initializer_list<std::string_view> switches, std::vector<std::string>& values,
                 std::vector<std::string>* seenFlags = nullptr)
{
    while (!args.Done()) {
        if (!args.AtFlag()) {
            std::string value;
            if (!args.TakeText(value))
                args.Skip();
            else
                values.push_back(value);
            continue;
        }
        const std::string flag(args.Take().Text);
        if (seenFlags)
            seenFlags->push_back(flag);
        if (IsOneOf(flag, flagsWithValue)) {
            std::string value;
            if (!args.TakeText(value))
                return context.Refuse(command, "the flag " + flag + " has no value");
            if (seenFlags)
                seenFlags->push_back(value);
        } else if (!IsOneOf(flag, switches)) {
            return UnknownFlag(context, command, flag);
        }
    }
    return true;
}

std::string FlagValue(const std::vector<std::string>& flags, std::initializer_list<std::string_view> names)
{
    for (size_t i = 0; i + 1 < flags.size(); ++i)
        if (IsOneOf(flags[i], names))
            return flags[i + 1];
    return std::string();
}

bool HasFlag(const std::vector<std::string>& flags, std::initializer_list<std::string_view> names)
{
    return std::any_of(flags.begin(), flags.end(), [&](const std::string& flag) { return IsOneOf(flag, names); });
}

bool ParseRequires(Arguments& args, Context& context)
{
    MaRequires required;
    std::vector<std::string> values;
    std::vector<std::string> flags;
    if (!Positionals(args, context, "requires", {"-nodeType", "-dataType"}, {}, values, &flags))
        return false;
    if (values.empty())
        return context.Refuse("requires", "no plug-in is named");
    required.Plugin = values.front();
    for (size_t i = 0; i + 1 < flags.size(); ++i)
        if (flags[i] == "-nodeType")
            required.NodeTypes.push_back(flags[i + 1]);
    context.Add(std::move(required));
    return true;
}

bool ParseCurrentUnit(Arguments& args, Context& context)
{
    std::vector<std::string> values;
    std::vector<std::string> flags;
    if (!Positionals(args, context, "currentUnit", {"-l", "-linear", "-a", "-angle", "-t", "-time"}, {"-ua",
                     "-updateAnimation"}, values, &flags))
        return false;
    context.Add(MaCurrentUnit{FlagValue(flags, {"-l", "-linear"}), FlagValue(flags, {"-a", "-angle"}),
                              FlagValue(flags, {"-t", "-time"})});
    return true;
}

bool ParseFile(Arguments& args, Context& context)
{
    std::vector<std::string> values;
    std::vector<std::string> flags;
    if (!Positionals(args, context, "file",
                     {"-rdi", "-referenceDepthInfo", "-ns", "-namespace", "-rfn", "-referenceNode", "-op", "-options",
                      "-typ", "-type", "-dr", "-deferReference", "-rpr", "-renamingPrefix", "-shd", "-sharedNodes",
                      "-pmt", "-prompt"},
                     {"-r", "-reference", "-gl", "-groupLocator", "-mnc", "-mergeNamespacesOnClash", "-lrd",
                      "-loadReferenceDepth", "-rnn", "-returnNewNodes"},
                     values, &flags))
        return false;
    // "file -rdi" only records how deep the references below were loaded; "file -r" loads one.
    if (!HasFlag(flags, {"-r", "-reference"}))
        return true;
    if (values.empty())
        return context.Refuse("file", "no file is named");
    const std::string deferred = FlagValue(flags, {"-dr", "-deferReference"});
    if (deferred == "1" || deferred == "true") {
        context.Result.Warn("file: the reference to '" + values.back() + "' was saved unloaded; it is not read",
                            context.Line);
        return true;
    }
    std::string prefix = FlagValue(flags, {"-ns", "-namespace"});
    if (prefix.empty())
        prefix = FlagValue(flags, {"-rpr", "-renamingPrefix"});
    context.Add(MaFileReference{values.back(), prefix});
    return true;
}

bool ParseSelect(Arguments& args, Context& context)
{
    std::vector<std::string> values;
    if (!Positionals(args, context, "select", {}, {"-ne", "-noExpand", "-r", "-replace", "-add", "-af", "-addFirst"},
                     values))
        return false;
    if (values.size() != 1)
        return context.Refuse("select", "only one node can be selected for the commands that follow");
    context.Add(MaSelect{values.front()});
    return true;
}

bool ParseRename(Arguments& args, Context& context)
{
    std::vector<std::string> values;
    std::vector<std::string> flags;
    if (!Positionals(args, context, "rename", {"-uid", "-uuid"}, {"-is", "-ignoreShape"}, values, &flags))
        return false;
    // "rename -uid" gives the current node its identifier, which nothing downstream uses.
    if (values.empty() && HasFlag(flags, {"-uid", "-uuid"}))
        return true;
    if (values.empty() || values.size() > 2)
        return context.Refuse("rename", "it takes a new name, or an old and a new one");
    context.Add(MaRename{values.size() == 2 ? values[0] : std::string(), values.back()});
    return true;
}

bool ParseParent(Arguments& args, Context& context)
{
    std::vector<std::string> values;
    std::vector<std::string> flags;
    if (!Positionals(args, context, "parent", {}, {"-s", "-shape", "-nc", "-noConnections", "-r", "-relative", "-a",
                     "-absolute", "-add", "-addObject", "-w", "-world", "-nis", "-noInvScale"},
                     values, &flags))
        return false;
    MaParent parent;
    parent.World = HasFlag(flags, {"-w", "-world"});
    parent.AddInstance = HasFlag(flags, {"-add", "-addObject"});
    if (values.size() < (parent.World ? 1u : 2u))
        return context.Refuse("parent", "it takes the nodes and their new parent");
    if (!parent.World) {
        parent.Parent = values.back();
        values.pop_back();
    }
    parent.Children = std::move(values);
    context.Add(std::move(parent));
    return true;
}

// Commands Maya writes that change nothing an export reads: file information, light linking, node locks.
bool IsWithoutEffect(std::string_view command)
{
    return IsOneOf(command, {"fileInfo", "relationship", "lockNode", "dataStructure", "cycleCheck"});
}

bool ParseStatement(const MaStatement& statement, Context& context)
{
    const MaToken& name = statement.Tokens.front();
    context.Line = statement.Line;
    Arguments args(statement);
    if (name.Kind != MaTokenKind::Word) {
        context.Result.Warn("a statement does not start with a command; it is passed over", context.Line);
        return false;
    }
    const std::string_view command = name.Text;
    if (command == "setAttr")
        return ParseSetAttr(args, context);
    if (command == "createNode")
        return ParseCreateNode(args, context);
    if (command == "connectAttr")
        return ParseConnectAttr(args, context);
    if (command == "addAttr")
        return ParseAddAttr(args, context);
    if (command == "rename")
        return ParseRename(args, context);
    if (command == "select")
        return ParseSelect(args, context);
    if (command == "parent")
        return ParseParent(args, context);
    if (command == "requires")
        return ParseRequires(args, context);
    if (command == "currentUnit")
        return ParseCurrentUnit(args, context);
    if (command == "file")
        return ParseFile(args, context);
    if (IsWithoutEffect(command))
        return true;
    context.Result.Warn("the command '" + std::string(command) + "' is not read; it is passed over", context.Line);
    return false;
}

} // namespace

bool ParseMayaAscii(std::string_view text, MaRecord& record, ImportResult& result)
{
    MaLexer lexer(text);
    MaStatement statement;
    Context context{record, result};
    std::string error;
    while (lexer.Next(statement, error))
        ParseStatement(statement, context);
    if (!error.empty()) {
        result.Error = error;
        return false;
    }
    if (!lexer.SawEndComment())
        result.Warn("the file has no closing '// End of' line; it may be truncated", lexer.Line());
    return true;
}
