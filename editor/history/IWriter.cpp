#include "history/IWriter.h"

IWriter::~IWriter() = default;
