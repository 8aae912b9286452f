// The few figures that a list of measurements is boiled down to.
#include "bench/statistics.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

double mean(std::vector<double> const& values)
{
  return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

// How far two lists vary together; a list with itself: how far it varies.
double sum_of_products(std::vector<double> const& x, std::vector<double> const& y)
{
  double const mean_x = mean(x);
  double const mean_y = mean(y);
  double sum = 0;
  for (size_t i = 0; i < x.size(); ++i) sum += (x[i] - mean_x) * (y[i] - mean_y);
  return sum;
}

}  // namespace

double quantile(std::vector<double> values, double part)
{
  std::sort(values.begin(), values.end());
  double const place = part * static_cast<double>(values.size() - 1);
  auto const below = static_cast<size_t>(place);
  size_t const above = std::min(below + 1, values.size() - 1);
  return std::lerp(values[below], values[above], place - static_cast<double>(below));
}

double median(std::vector<double> const& values) { return quantile(values, 0.5); }

std::vector<double> ratios(std::vector<double> const& values, std::vector<double> const& bases)
{
  std::vector<double> result;
  std::transform(values.begin(), values.end(), bases.begin(), std::back_inserter(result),
                 std::divides<>());
  return result;
}

Line fit_line(std::vector<double> const& x, std::vector<double> const& y)
{
  double const slope = sum_of_products(x, y) / sum_of_products(x, x);
  double const correlation =
      sum_of_products(x, y) / std::sqrt(sum_of_products(x, x) * sum_of_products(y, y));
  return {mean(y) - slope * mean(x), slope, correlation * correlation};
}
