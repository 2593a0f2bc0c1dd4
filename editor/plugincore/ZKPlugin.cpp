#include "plugincore/ZKPlugin.h"

ZKPlugin::ZKPlugin(QObject* parent) : QObject(parent) {}

ZKPlugin::~ZKPlugin() = default;
