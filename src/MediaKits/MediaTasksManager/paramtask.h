// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/mediatask.h"

/// A task with a parameter: owns it, refuses any of another type, and starts only with one.
/// @tparam P the parameter's class, which names its number `paramType`
/// @tparam Base a task with a `run()` that does what `start` is for
template<class P, class Base>
class ParamTask : public Base
{
public:
    using Base::Base;

    void start() override
    {
        if (m_param)
            Base::run();
        else
            Base::failWithoutParam();
    }

    MediaTaskParam *param() const override { return m_param.data(); }

    void setParam(MediaTaskParam *param) override
    {
        if (!param)
            return;
        if (param->type == P::paramType)
            m_param = QSharedPointer<P>(static_cast<P *>(param));
        else
            Base::refuseParam();
    }

protected:
    /// For a task that turns its parameter into that of its base.
    void setBaseParam(MediaTaskParam *param) { Base::setParam(param); }

    QSharedPointer<P> m_param;
};
