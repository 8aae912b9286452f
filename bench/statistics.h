// The few figures that a list of measurements is boiled down to.
#pragma once

#include <vector>

// The value below which this part (0 to 1) of the values lies. REQUIRES: values.
double quantile(std::vector<double> values, double part);

double median(std::vector<double> const& values);

// The quotients of the values that belong together.
std::vector<double> ratios(std::vector<double> const& values, std::vector<double> const& bases);

// The straight line with the least squares: y = at_zero + slope * x. `r_squared` is 1 when
// all points lie on it.
struct Line {
  double at_zero;
  double slope;
  double r_squared;
};
Line fit_line(std::vector<double> const& x, std::vector<double> const& y);
