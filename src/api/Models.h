#pragma once

// Every record that the server sends.
#include "api/AccountModels.h"
#include "api/NodeModels.h"
#include "api/TunnelModels.h"
