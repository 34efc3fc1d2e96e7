#include "harvest/MaterialNameCheck.h"

#include "model/VMModel.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/NoCaseLess.h"

#include <map>
#include <string>

int CheckDuplicateMaterialNames(const VMMeshBase& container, VReport& report)
{
    // Counting the earlier equal names gives one issue per equal pair without comparing every
    // pair, which matters for scenes with thousands of shaders.
    std::map<std::string, int, NoCaseLess> earlier;
    int result = 0;
    for (const VMMaterial* material : container.Materials) {
        if (!material)
            continue;
        int& seen = earlier[material->Name];
        for (int i = 0; i < seen; ++i)
            report.AddIssue(IssueDuplicateMaterialNames, material->Name);
        if (seen > 0)
            result = -1;
        ++seen;
    }
    return result;
}

void RemoveMaterialsWithoutPolygons(VMModel& model)
{
    for (int i = 0; i < model.Materials.Count(); ++i) {
        const VMMaterial* material = model.Materials[i];
        if (material && material->UseCount == 0)
            model.Materials.RemoveLeaveEmpty(i);
    }
    model.Materials.Compact();
}
