#pragma once

#include <QPointer>

/// The one widget of a class that the program shares. The first one made is it until it is deleted, which
/// the window that holds it does; then the next Get() makes another. Main thread only.
template <typename Widget>
class SingleWidget
{
public:
    SingleWidget() = delete;

    /// Called by the widget's constructor.
    static void Register(Widget* widget)
    {
        if (!s_pWidget) s_pWidget = widget;
    }

    /// Never null; the constructor called here registers.
    static Widget* Get()
    {
        if (!s_pWidget) new Widget;
        return s_pWidget;
    }

private:
    inline static QPointer<Widget> s_pWidget;
};
