#include "tool/line_source.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <thread>
#include <vector>

namespace jwnls::tool {
namespace {

struct Line {
  std::uint64_t number;
  std::string text;
  bool too_long;
  bool operator==(const Line&) const = default;
};

// Reads `text` through a pipe that gets it in pieces.
std::vector<Line> lines_of(const std::string& text, std::size_t piece_bytes) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  std::thread writer([&] {
    for (std::size_t at = 0; at < text.size(); at += piece_bytes) {
      const auto piece = std::string_view(text).substr(at, piece_bytes);
      if (write(ends[1], piece.data(), piece.size()) < 0) break;
    }
    close(ends[1]);
  });
  std::vector<Line> lines;
  LineSource source(ends[0], [] {});
  std::string_view line;
  while (source.next(line)) {
    lines.push_back({source.number(), std::string(line), source.too_long()});
    for (std::string_view piece; source.more(piece);) lines.back().text += piece;
  }
  EXPECT_FALSE(source.next(line));  // the end stays the end
  writer.join();
  close(ends[0]);
  return lines;
}

TEST(LineSource, GivesLinesWithoutTheirEnds) {
  const std::string bom = "\xEF\xBB\xBF";
  const auto check = [&](const std::string& text, const std::vector<Line>& lines) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{1000}})
      EXPECT_EQ(lines_of(text, piece), lines);
  };
  check("", {});
  check("\n", {{1, "", false}});
  check("a", {{1, "a", false}});
  check("a\nb", {{1, "a", false}, {2, "b", false}});
  check("a\r\n\r\nb\n", {{1, "a", false}, {2, "", false}, {3, "b", false}});
  check(bom + "a\n" + bom + "b", {{1, "a", false}, {2, bom + "b", false}});
  check(std::string("a\0b\n", 4), {{1, std::string("a\0b", 3), false}});
}

TEST(LineSource, GivesLongLinesPieceByPiece) {
  constexpr auto most = LineSource::longest_line;
  const std::string fits(most, 'x');
  const std::string returns = fits + std::string(300'000, '\r') + "z";
  const std::string text = fits + "\r\n" + fits + "y\n" + returns + "\r\nend\n" + returns + "\r";
  const std::vector<Line> expected = {{1, fits, false},
                                      {2, fits + "y", true},
                                      {3, returns, true},
                                      {4, "end", false},
                                      {5, returns, true}};
  for (const std::size_t piece : {std::size_t{1}, std::size_t{999}, std::size_t{1'000'000}})
    EXPECT_EQ(lines_of(text, piece), expected);
}

TEST(LineSource, ASignalIsNotTheEnd) {
  struct sigaction nothing = {};
  nothing.sa_handler = [](int) {};  // without SA_RESTART: what waits is interrupted
  sigaction(SIGUSR1, &nothing, nullptr);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::thread writer([out = ends[1], reader = pthread_self()] {
    for (int i = 0; i < 3; ++i) {
      usleep(10'000);
      pthread_kill(reader, SIGUSR1);
    }
    EXPECT_EQ(write(out, "it\n", 3), 3);
    close(out);
  });
  LineSource source(ends[0], [] {});
  std::string_view line;
  ASSERT_TRUE(source.next(line));
  EXPECT_EQ(line, "it");
  writer.join();
  close(ends[0]);
}

}  // namespace
}  // namespace jwnls::tool
