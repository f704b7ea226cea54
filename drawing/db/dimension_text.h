// The text of a dimension. Private to the drawing layer.
#pragma once

#include "db/dim_style.h"

#include <string>

namespace vndk::db {

using DimVariables = AcDbDimStyleTableRecord::Data;

/// What is measured, and what is written around it.
struct Measurement {
    double value = 0;   // drawing units, or radians
    bool angle = false; // of the measurement
    const char* prefix = "";
};

/// The measurement in the form that the variables ask for, with tolerances and alternate units.
std::string measurementText(const Measurement& measurement, const DimVariables& variables);

/// The text as it is shown: see AcDbDimension::dimensionText.
std::string dimensionText(const std::string& userText, const Measurement& measurement, const DimVariables& variables);

/// About how wide the longest line of a paragraph is, for a height of 1. Formats take no room.
double estimatedWidth(const std::string& paragraph);
/// How many lines a paragraph has.
int lineCount(const std::string& paragraph);

} // namespace vndk::db
