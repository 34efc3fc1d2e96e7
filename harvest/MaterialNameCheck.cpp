#include "harvest/MaterialNameCheck.h"

#include "model/VMMeshBase.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/NoCaseLess.h"

#include <map>
#include <string>
#include <vector>

int CheckDuplicateMaterialNames(const VMMeshBase& container, VReport& report)
{
    // Grouping the names first gives the equal pairs (i, j) in order without comparing every
    // pair, which matters for scenes with thousands of shaders.
    struct Namesakes {
        std::vector<const VMMaterial*> Materials;
        size_t Next = 0;
    };
    std::map<std::string, Namesakes, NoCaseLess> byName;
    for (const VMMaterial* material : container.Materials)
        if (material)
            byName[material->Name].Materials.push_back(material);
    int result = 0;
    for (const VMMaterial* material : container.Materials) {
        if (!material)
            continue;
        Namesakes& namesakes = byName[material->Name];
        for (size_t later = ++namesakes.Next; later < namesakes.Materials.size(); ++later) {
            report.AddIssue(IssueDuplicateMaterialNames, namesakes.Materials[later]->Name);
            result = -1;
        }
    }
    return result;
}
