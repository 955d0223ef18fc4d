#include "tool/commands/completion_command.h"

#include <algorithm>
#include <charconv>
#include <exception>

#include "tool/commands/complete_words.h"
#include "tool/commands/manual_page.h"
#include "tool/nearest_name.h"
#include "tool/output.h"
#include "tool/terminal_text.h"

namespace jwnls::tool {
namespace {

struct Script {
  const char* shell;
  const char* text;
};

// Each asks the program, as it alone knows what may stand where.
constexpr Script scripts[] = {
    {"bash", R"(# bash completion for jwnls
_jwnls() {
  local words=() index=0 at line=$COMP_LINE word reply=() how
  # The shell parts words at "=" and ":": what has no blank before it belongs to the word before.
  for ((at = 0; at < ${#COMP_WORDS[@]}; at++)); do
    word=${COMP_WORDS[at]}
    if ((at == 0)) || [[ -z $COMP_LINE || $line == [[:blank:]]* ]]; then
      words+=("$word")
    else
      words[${#words[@]} - 1]+=$word
    fi
    line=${line#"${line%%[![:blank:]]*}"}
    line=${line#"$word"}
    ((at == COMP_CWORD)) && index=$((${#words[@]} - 1))
  done
  local quote= whole=${words[index]}
  [[ $whole == [\'\"]* ]] && quote=${whole:0:1}
  # Of the words only what quotes hold is known to the program.
  for at in "${!words[@]}"; do
    word=${words[at]}
    word=${word#[\'\"]}
    ((at == index)) || word=${word%[\'\"]}
    words[at]=${word//\\}
  done
  local current=${words[index]} given=${COMP_WORDS[COMP_CWORD]}
  given=${given#[\'\"]}
  given=${given//\\}
  case $given in [=:]*) given=${given:1} ;; esac
  local before=${current%"$given"}
  mapfile -t reply < <("${words[0]/#\~/$HOME}" --complete "$index" "${words[@]}" 2>/dev/null)
  how=${reply[0]:-words}
  COMPREPLY=()
  for word in "${reply[@]:1}"; do
    word=${word%%$'\t'*}
    word=${word#"$before"}
    # What the shell would take for more than a text.
    [[ -z $quote && $word == *[[:space:]\'\"\\\$\`\&\;\|\<\>\(\)\*\?\[\]\{\}\#\!]* ]] &&
      printf -v word %q "$word"
    COMPREPLY+=("$word")
  done
  [[ $how == open ]] && compopt -o nospace 2>/dev/null
  if [[ $how == files ]]; then
    compopt -o filenames 2>/dev/null
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$given")
  fi
}
complete -F _jwnls jwnls
)"},
    {"zsh", R"(#compdef jwnls
_jwnls() {
  local -a lines names shown
  local line how
  local -i found=1
  lines=("${(@f)$(_call_program jwnls ${(q)words[1]} --complete $((CURRENT - 1)) ${(q)${(@Q)words}} 2>/dev/null)}")
  how=$lines[1]
  shift lines
  for line in $lines; do
    names+=("${line%%$'\t'*}")
    shown+=("${line/$'\t'/  -- }")
  done
  if [[ $how == open ]]; then
    compadd -l -S '' -d shown -a names && found=0
  else
    compadd -l -d shown -a names && found=0
  fi
  [[ $how == files ]] && _files && found=0
  return found
}
if [[ $funcstack[1] == _jwnls ]]; then
  _jwnls "$@"
else
  compdef _jwnls jwnls
fi
)"},
    {"fish", R"(# fish completion for jwnls
function __jwnls_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l index (count $words)
    # Words behind the cursor say which file is meant.
    set -l all (commandline -o)
    set -l next (math $index + 1)
    test -n "$current"; and set next (math $next + 1)
    set -a words "$current"
    test $next -le (count $all); and set -a words $all[$next..-1]
    set -l lines ($words[1] --complete $index $words 2>/dev/null)
    test (count $lines) -gt 1; and printf '%s\n' $lines[2..-1]
    test "$lines[1]" = files; and __fish_complete_path (commandline -ct)
end
complete -c jwnls -f -a '(__jwnls_complete)'
)"},
};

void write(const std::string& text) {
  Output output;
  output.write(text);
  output.flush();
}

void write_candidates(const std::vector<std::string>& words) {
  std::size_t index = 0;
  const std::string& number = words[1];
  (void)std::from_chars(number.data(), number.data() + number.size(), index);
  Candidates found;
  try {
    found = complete_words({words.begin() + 2, words.end()}, index);
  } catch (const Failure&) {
    // A table that cannot be read: nothing is offered, and the line is not disturbed.
  } catch (const std::exception&) {
  }
  const bool is_open = std::any_of(found.all.begin(), found.all.end(), [&](const Candidate& each) {
    return each.word.ends_with('=') || each.help.starts_with("column ");
  });
  std::string text = found.are_files ? "files\n" : is_open ? "open\n" : "words\n";
  for (const Candidate& each : found.all) {
    text.append(escaped(each.word)).append(each.help.empty() ? "" : "\t");
    text.append(escaped(each.help)).append("\n");
  }
  write(text);
}

}  // namespace

ExitCode write_completions(const std::string& shell) {
  std::vector<std::string> shells;
  for (const Script& script : scripts) {
    if (shell == script.shell) {
      write(script.text);
      return ExitCode::ok;
    }
    shells.emplace_back(script.shell);
  }
  throw Failure{ExitCode::usage, in_quotes(shell) + " is none of bash zsh fish" +
                                     did_you_mean(shell, shells) + " (see --help)"};
}

std::optional<ExitCode> run_hidden(const std::vector<std::string>& words) {
  if (words.empty()) return std::nullopt;
  if (words.front() == "--manual") {
    write(manual_page());
    return ExitCode::ok;
  }
  if (words.front() != "--complete" || words.size() < 3) return std::nullopt;
  write_candidates(words);
  return ExitCode::ok;
}

}  // namespace jwnls::tool
