#pragma once

#include "core/ZKActivateAction.h"

/// A tool's action that asks a member function of the tool before the tool loses its turn.
template <class T>
class ZKActivateActionByMember : public ZKActivateAction
{
public:
    using Member = bool (T::*)();

    /// @param owner  outlives the action.
    ZKActivateActionByMember(QObject* parent, T* owner, Member isAllowChange)
        : ZKActivateAction(parent), m_pOwner(owner), m_pIsAllowChange(isAllowChange)
    {}

    bool IsAllowChange() override { return (m_pOwner->*m_pIsAllowChange)(); }

private:
    T* m_pOwner;
    Member m_pIsAllowChange;
};
