#include "common/BuildTime.h"

const char* BuildTime::Date()
{
    return __DATE__;
}

const char* BuildTime::Time()
{
    return __TIME__;
}
