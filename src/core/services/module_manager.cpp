#include "core/services/module_manager.h"

#include "core/base/log.h"

ModuleManager* theModuleManager = nullptr;

ModuleManager::ModuleManager() {
    logLine("ModuleManager Konstruktor\n");
}
