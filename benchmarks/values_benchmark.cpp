// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <random>
#include <vector>

using namespace dravelin;

namespace {

std::vector<double> someValues()
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> values(-1000, 1000);
    std::vector<double> result(1024);
    for (double &value : result)
        value = values(random);
    return result;
}

std::vector<std::string> someTexts(const char *format)
{
    std::vector<std::string> result;
    for (const double value : someValues()) {
        char text[128];
        std::snprintf(text, sizeof text, format, value, value / 7, value / 1000, 1.0);
        result.emplace_back(text);
    }
    return result;
}

std::vector<QString> asQt(const std::vector<std::string> &texts)
{
    std::vector<QString> result;
    for (const std::string &text : texts)
        result.push_back(QString::fromStdString(text));
    return result;
}

template <typename Inputs, typename Function>
void run(benchmark::State &state, const Inputs &inputs, Function function)
{
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(function(inputs[i++ % inputs.size()]));
}

QString byToChars(double value)
{
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 15).ptr;
    return QString::fromLatin1(buffer, end - buffer);
}

std::size_t byToCharsAlone(double value)
{
    static char buffer[400];
    return std::size_t(std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 15).ptr - buffer);
}

std::array<float, 4> byFromChars(const std::string &text)
{
    std::array<float, 4> numbers{};
    const char *position = text.data();
    for (float &number : numbers)
        position = std::from_chars(position, text.data() + text.size(), number).ptr + 1;
    return numbers;
}

std::array<float, 4> bySscanf(const std::string &text)
{
    std::array<float, 4> numbers{};
    std::sscanf(text.c_str(), "%f %f %f %f", &numbers[0], &numbers[1], &numbers[2], &numbers[3]);
    return numbers;
}

double byFromCharsDouble(const std::string &text)
{
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void add(const char *name, auto inputs, auto function)
{
    benchmark::RegisterBenchmark(name, [=](benchmark::State &state) { run(state, inputs, function); });
}

const int registered = [] {
    const auto numbers = someTexts("%.15f"), colors = someTexts("%.3f %.3f %.3f %.3f");
    add("doubleToStr/ours/15", someValues(), [](double v) { return doubleToStr(v, 15); });
    add("doubleToStr/to_chars/15", someValues(), byToCharsAlone);
    add("doubleToStr/to_chars_as_QString/15", someValues(), byToChars);
    add("doubleToStr/QString::number/15", someValues(), [](double v) { return QString::number(v, 'f', 15); });
    add("strToDouble/ours/15", asQt(numbers), strToDouble);
    add("strToDouble/from_chars/15", numbers, byFromCharsDouble);
    add("strToDouble/QString::toDouble/15", asQt(numbers), [](const QString &text) { return text.toDouble(); });
    add("stringToColor/ours/4", asQt(colors), stringToColor);
    add("stringToColor/from_chars/4", colors, byFromChars);
    add("stringToColor/sscanf/4", colors, bySscanf);
    add("colorToString/ours/4", asQt(colors), [](const QString &text) { return colorToString(stringToColor(text)); });
    return 0;
}();

} // namespace
