#pragma once
// The flows of the "ZephraPrefab" command: choosing or creating the editor project the command
// keeps for the module's lifetime, and editing the export settings of the mesh one prefab node
// is exported to ("zephra_ExportTo", relative to that project).

// "-setproj": an open dialog for the project file; cancelling keeps the project as it was.
void ChoosePrefabProject();
// "-newproj": a save dialog, then a new project with its standard folders that becomes the
// command's project; a project that cannot be created is named in Maya's script editor.
void CreatePrefabProject();
// "-edit": the static mesh options dialog on the file the one selected prefab node names (asked
// for first when the node names none), with the centre at the node; confirming stores the
// options beside that file and, when the dialog moved the target, the new name on the node.
void EditPrefabNodeSettings();
