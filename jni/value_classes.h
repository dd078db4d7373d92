// The descriptions of the Java value classes the natives build and read.
#ifndef VELATRIX_JNI_VALUE_CLASSES_H
#define VELATRIX_JNI_VALUE_CLASSES_H

#include "record_codec.h"

namespace velatrix::jni {

// Information reports (built from the record).
extern const ValueClass kDisplay;
extern const ValueClass kVersion;
extern const ValueClass kCapabilities;
extern const ValueClass kCoordinateRange;
extern const ValueClass kOperatingModes;
extern const ValueClass kDeviceStatus;
extern const ValueClass kCalibrationState;
// Parameter reports (built from the record and read back into it).
extern const ValueClass kDisplaySettings;
extern const ValueClass kFrequencyAmplitude;
extern const ValueClass kGeneralParameters;
extern const ValueClass kPenParameters;
extern const ValueClass kTouchParameters;
extern const ValueClass kOutputConfiguration;
extern const ValueClass kPeripheralConfiguration;
extern const ValueClass kCalibrationData;
extern const ValueClass kConfiguration;
// Only read from Java.
extern const ValueClass kFirmwarePage;
extern const ValueClass kDisplayChunk;
// Screens and resources.
extern const ValueClass kScreenModify;
extern const ValueClass kScreenRegionInfo;
extern const ValueClass kResourceInfo;
extern const ValueClass kResourceAvailability;
// Input events, over the members of velatrix_input_report's union.
extern const ValueClass kCoordinate;
extern const ValueClass kExtendedCoordinate;
extern const ValueClass kAdcScanValues;
extern const ValueClass kAdcChannelValues;
extern const ValueClass kMagneticCardSwipe;
extern const ValueClass kDebugCoordinate;

}  // namespace velatrix::jni

#endif
