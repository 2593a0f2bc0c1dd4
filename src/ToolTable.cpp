#include "ToolTable.h"

#include "LXViewTool.h"
#include "clipboardprivate/ClipboardTool.h"
#include "fillmenu/LXFillTool.h"
#include "magicwand/MagicWandTool.h"
#include "movetoolprivate/MoveTool.h"
#include "selectionmenu/ColorRangeSelect_p.h"
#include "selectionmenu/SelectionMenuTool.h"

#include "fillcan/FillCan_p.h"

namespace {
template <class Tool>
QObject* MakeViewTool()
{
    return new LXViewTool(new Tool(nullptr));
}

template <class Tool>
QObject* MakeTool()
{
    return new Tool;
}
} // namespace

const std::vector<ToolRow>& ToolTable()
{
    static const std::vector<ToolRow> rows{
        {"{B0000000-0000-0000-0000-000000000010}", "Fillcan", MakeViewTool<FillCanPrivate>},
        {"{B0000000-0000-0000-0000-000000000018}", "Fill menu", MakeViewTool<LXFillTool>},
        {"{B0000000-0000-0000-0000-000000000023}", "Selection menu", MakeTool<SelectionMenuTool>},
        {"{B0000000-0000-0000-0000-000000000024}", "Color range", MakeViewTool<ColorRangeSelectPrivate>},
        {"{B0000000-0000-0000-0000-000000000025}", "Move tool", MakeTool<MoveTool>},
        {"{B0000000-0000-0000-0000-000000000026}", "Magic wand", MakeTool<MagicWandTool>},
        {"{B0000000-0000-0000-0000-000000000027}", "Clipboard", MakeTool<ClipboardTool>},
    };
    return rows;
}
