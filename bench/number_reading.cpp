#include "bench/number_reading.h"

#include <fast_float/fast_float.h>
#include <unicode/unum.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <random>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "bench/contest.h"
#include "bench/handles.h"
#include "module/format_numbers/integer_services.h"

namespace jwnls::bench {
namespace {

// The texts of one task, one behind the other, in both encodings.
class Texts {
 public:
  template <typename Unit>
  std::basic_string_view<Unit> get(std::size_t i) const {
    const std::size_t start = i == 0 ? 0 : ends_[i - 1];
    return {(sizeof(Unit) == 2 ? reinterpret_cast<const Unit*>(wide_.data())
                               : reinterpret_cast<const Unit*>(narrow_.data())) +
                start,
            ends_[i] - start};
  }
  std::string_view narrow(std::size_t i) const { return get<char>(i); }

  void add(std::u16string_view ascii) {
    wide_ += ascii;
    narrow_.append(ascii.begin(), ascii.end());
    ends_.push_back(wide_.size());
  }

 private:
  std::u16string wide_;
  std::string narrow_;
  std::vector<std::size_t> ends_;
};

// Amounts from 0.01 to 10^9, spread evenly over the magnitudes, with two decimals.
Texts amounts(LocaleHandle* handle, std::uint32_t flags) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> magnitude(-2, 9);
  Texts texts;
  char16_t text[64];
  std::int64_t length = 0;
  for (std::size_t i = 0; i < value_count; ++i) {
    handle->services.format_number(handle, std::pow(10.0, magnitude(random)), 0, 2, flags, text, 64,
                                   &length);
    texts.add({text, static_cast<std::size_t>(length)});
  }
  return texts;
}

// 63-bit integers of every length.
Texts integers(LocaleHandle* handle, std::uint32_t flags) {
  std::mt19937_64 random(3);
  Texts texts;
  char16_t text[64];
  std::int64_t length = 0;
  for (std::size_t i = 0; i < value_count; ++i) {
    const std::uint64_t value = random() >> (1 + random() % 63);
    handle->services.format_uint64(handle, value, 0, 1, flags, text, 64, &length);
    texts.add({text, static_cast<std::size_t>(length)});
  }
  return texts;
}

// A contestant that reads texts of one unit: `read(text, value)` is true when it read the whole.
template <typename Unit, typename Value, typename Read>
void enter_reader(const char* task, Side side, const char* name, const Texts& texts, Read read) {
  enter(task, side, name, [=, &texts](benchmark::State& state) {
    bool read_all = true;
    walk(state, [&](std::size_t i) {
      Value value = 0;
      read_all &= read(texts.get<Unit>(i), value);
      benchmark::DoNotOptimize(value);
    });
    if (!read_all) state.SkipWithError("a text was not read");
  });
}

template <typename Unit>
void ours_number(const char* task, const char* name, LocaleHandle* handle,
                 ReadNumber<Unit>* service, const Texts& texts) {
  enter_reader<Unit, double>(
      task, Side::ours, name, texts, [=](std::basic_string_view<Unit> text, double& value) {
        std::int64_t consumed = 0;
        return service(handle, text.data(), static_cast<std::int32_t>(text.size()), &value,
                       &consumed) == 0;
      });
}

template <typename Unit>
void ours_integer(const char* task, const char* name, LocaleHandle* handle,
                  ReadInteger<std::uint64_t, Unit>* service, const Texts& texts) {
  enter_reader<Unit, std::uint64_t>(
      task, Side::ours, name, texts, [=](std::basic_string_view<Unit> text, std::uint64_t& value) {
        std::int64_t consumed = 0;
        return service(handle, text.data(), static_cast<std::int64_t>(text.size()), 0, &value,
                       &consumed) == 0;
      });
}

// A stream buffer without a buffer: the facet reads from pointers and asks the stream for its
// locale alone.
class NoBuffer : public std::streambuf {};

template <typename Value>
void num_get(const char* task, const char* locale_name, const Texts& texts) {
  enter(task, Side::peer, "std::num_get", [=, &texts](benchmark::State& state) {
    using Facet = std::num_get<char, const char*>;
    const std::locale locale(std::locale(locale_name), new Facet);
    const auto& facet = std::use_facet<Facet>(locale);
    NoBuffer buffer;
    std::ios stream(&buffer);
    stream.imbue(locale);
    bool read_all = true;
    walk(state, [&](std::size_t i) {
      const std::string_view text = texts.narrow(i);
      Value value = 0;
      auto error = std::ios::goodbit;
      facet.get(text.data(), text.data() + text.size(), stream, error, value);
      read_all &= (error & std::ios::failbit) == 0;
      benchmark::DoNotOptimize(value);
    });
    if (!read_all) state.SkipWithError("a text was not read");
  });
}

// ICU with a formatter that is made once.
template <typename Value>
void icu(const char* task, const char* locale, const Texts& texts) {
  enter(task, Side::icu, "ICU", [=, &texts](benchmark::State& state) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* format = unum_open(UNUM_DECIMAL, nullptr, 0, locale, nullptr, &error);
    walk(state, [&](std::size_t i) {
      const auto text = texts.get<char16_t>(i);
      const auto length = static_cast<std::int32_t>(text.size());
      if constexpr (sizeof(Value) == 8 && std::is_integral_v<Value>) {
        benchmark::DoNotOptimize(unum_parseInt64(format, text.data(), length, nullptr, &error));
      } else {
        benchmark::DoNotOptimize(unum_parseDouble(format, text.data(), length, nullptr, &error));
      }
    });
    if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
    unum_close(format);
  });
}

// What reads from two pointers and answers with the end.
template <typename Value, typename FromChars>
void from_chars_peer(const char* task, const char* name, const Texts& texts, FromChars from_chars) {
  enter_reader<char, Value>(task, Side::peer, name, texts,
                            [=](std::string_view text, Value& value) {
                              const char* end = text.data() + text.size();
                              return from_chars(text.data(), end, value).ptr == end;
                            });
}

}  // namespace

void enter_number_reading() {
  LocaleHandle* const german = handle_of(u"de_DE");
  LocaleHandle* const english = handle_of(u"en_US");
  {
    const char* task = "read \"1.234.567,89\"";
    static const Texts texts = amounts(german, number_flags::fixed | number_flags::group);
    declare({task, 0.20, 0.045});
    ours_number(task, "UTF-16", german, german->services.read_number, texts);
    ours_number(task, "UTF-8", german, german->services.read_number_8bit, texts);
    num_get<double>(task, "de_DE.UTF-8", texts);
    icu<double>(task, "de_DE", texts);
  }
  {
    const char* task = "read \"1234567.89\"";
    static const Texts texts = amounts(english, number_flags::fixed);
    declare({task, 1.05, 0.04});
    ours_number(task, "UTF-16", english, english->services.read_number, texts);
    ours_number(task, "UTF-8", english, english->services.read_number_8bit, texts);
    from_chars_peer<double>(task, "fast_float", texts,
                            [](const char* text, const char* end, double& value) {
                              return fast_float::from_chars(text, end, value);
                            });
    from_chars_peer<double>(task, "std::from_chars", texts,
                            [](const char* text, const char* end, double& value) {
                              return std::from_chars(text, end, value);
                            });
    icu<double>(task, "en_US", texts);
  }
  {
    const char* task = "read integer, plain";
    static const Texts texts = integers(english, 0);
    declare({task, 1.10, 0.05});
    ours_integer(task, "UTF-16", english, english->services.read_uint64, texts);
    ours_integer(task, "UTF-8", english, english->services.read_uint64_8bit, texts);
    from_chars_peer<std::uint64_t>(task, "std::from_chars", texts,
                                   [](const char* text, const char* end, std::uint64_t& value) {
                                     return std::from_chars(text, end, value);
                                   });
    icu<std::int64_t>(task, "en_US", texts);
  }
  {
    const char* task = "read integer, grouped";
    static const Texts texts = integers(english, integer_flags::group);
    declare({task, 0.35, 0.05});
    ours_integer(task, "UTF-16", english, english->services.read_uint64, texts);
    ours_integer(task, "UTF-8", english, english->services.read_uint64_8bit, texts);
    num_get<unsigned long>(task, "en_US.UTF-8", texts);
    icu<std::int64_t>(task, "en_US", texts);
  }
}

}  // namespace jwnls::bench
