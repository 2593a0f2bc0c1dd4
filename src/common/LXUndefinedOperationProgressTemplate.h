#pragma once

#include "gui/LXUndefinedOperationProgress.h"

/// Runs an operation, an object with a call operator, on a worker while the dialog stands. The operation
/// doesn't throw; what came of it is read from it after Execute(). Main thread only.
template <class Operation>
class LXUndefinedOperationProgressTemplate : public LXUndefinedOperationProgress
{
public:
    /// @param operation  outlives this object.
    LXUndefinedOperationProgressTemplate(Operation& operation, QWidget* parent)
        : LXUndefinedOperationProgress(parent), m_Operation(operation)
    {}

protected:
    void Run() override { m_Operation(); }

private:
    Operation& m_Operation;
};
