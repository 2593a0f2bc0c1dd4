#include "ToolTable.h"

#include "LXViewTool.h"

#include "fillcan/FillCan_p.h"

namespace {
template <class Tool>
QObject* MakeViewTool()
{
    return new LXViewTool(new Tool(nullptr));
}
} // namespace

const std::vector<ToolRow>& ToolTable()
{
    static const std::vector<ToolRow> rows{
        {"{B0000000-0000-0000-0000-000000000010}", "Fillcan", MakeViewTool<FillCanPrivate>},
    };
    return rows;
}
