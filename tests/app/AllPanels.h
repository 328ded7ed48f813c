#pragma once

// The panels that the window assembles.

#include "panels/CorrectionSettings.h"
#include "panels/WActualStepperCurrents.h"
#include "panels/WChopperSettings.h"
#include "panels/WClosedLoopSettings.h"
#include "panels/WCurrentControl.h"
#include "panels/WCurrentScalerSettings.h"
#include "panels/WDirectMode.h"
#include "panels/WFieldWeakeningSettings.h"
#include "panels/WJogPositionControl.h"
#include "panels/WJogTorqueControl.h"
#include "panels/WJogVelocityControl.h"
#include "panels/WOpenLoopSettings.h"
#include "panels/WPositionControl.h"
#include "panels/WPositionMaintenanceSettings.h"
#include "panels/WStepperEncoderSettings.h"
#include "panels/WStepperStatusFlags.h"
#include "panels/WStepperVelocityRampControl.h"
#include "panels/WVelocityControl.h"
