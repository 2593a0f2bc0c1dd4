#include "history/IReader.h"

IReader::~IReader() = default;
