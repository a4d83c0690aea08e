"""What is run at extreme sizes, and how it is to end."""
from dataclasses import dataclass, field
from typing import Callable


@dataclass
class Row:
    name: str
    size: int
    pieces: Callable     # of the size: pairs of a text and how often it stands in the input
    words: list          # the command; its standard input is the input, too
    output: Callable = lambda size: 0    # of the size: the bytes on standard output
    status: int = 0
    message: str = ""           # how standard error begins
    mebibytes: int = None       # a run may take no more
    is_scaled: bool = True      # false: the size is what the row is about
    files: dict = field(default_factory=dict)    # what else the run needs


MILLION = 1_000_000
GIGA = 1000 * MILLION
POWER = 1 << 20
STREAMED = 40    # MiB, far below any of the inputs

REWRITE = ["zarel", "-silent", "-preparsing", "input"]
READ = ["zarel", "-silent", "-postparsing"]
SOLVE = ["dl", "input"]


def around(before, text, after):
    return lambda size: [(before, 1), (text, size), (after, 1)]


def nested(before, opening, inner, closing, after):
    return lambda size: [(before, 1), (opening, size), (inner, 1), (closing, size), (after, 1)]


def numbered(*texts):
    """Each text as often as the size says, with its number in the place of N."""
    return lambda size: ((text.replace("N", str(i)), 1) for text in texts for i in range(size))


def just(text):
    return lambda size: len(text)


def plus(text, each):
    return lambda size: len(text) + size * len(each)


def digits(count):
    """Of all numbers below the count."""
    return sum(len(str(i)) for i in range(count))


def unfolded_length(size):
    """Of a fact p(f(...f(a)...)) without its function terms."""
    head = len("a_2(p,default,F_f_) :- .\n") + len(str(size - 1))
    literals = size * len("#function_builtin(F_f_,f,F_f_), ") + digits(size) + digits(size - 1)
    return head + literals - len("F_f_") + len("a") - len(", ")


def addresses_length(size):
    return size * len('a_2(a,default,"http://u#x").\n') + digits(size)


def length_of_pairs(size):
    """Of the answer set of p(i) and q(i)."""
    return 2 * (size * len("p(), ") + digits(size)) - len(", ") + len("{}\n")


SETS = ('{a_2(p, default, 1), a_3(q, default, f(1), "x")}\n', '{p(1), q(f(1),"x")}\n')
PRINTER = {"printer": "#!/bin/sh\nexec cat input\n", "program": "a.\n"}
MODELS = ('p(1) q(f(1),"x y") r(a)\n', '{p(1), q(f(1),"x y"), r(a)}\n')
CLINGO = {"clingo": "#!/bin/sh\ncat input\necho SATISFIABLE\nexit 30\n", "program": "a.\n"}

ROWS = [
    Row("program: nested function terms", MILLION, nested("p(", "f(", "a", ")", ")."), REWRITE, unfolded_length),
    Row("program: nested frames", MILLION, nested("", "a[b->", "c", "]", "."), REWRITE,
        plus("", 'a_5(valueOf,defaultFlogic,a,b,a,"->").\n')),
    Row("program: open parentheses", MILLION, around("", "(", ""), REWRITE, message="input: line 1: syntax error.",
        status=1),
    Row("program: function terms beyond the parser's stack", 10 * MILLION, around("p(", "f(", ""), REWRITE,
        message="input: line 1: memory exhausted.", status=1, is_scaled=False),
    Row("program: name", 100 * MILLION, around("", "a", "."), REWRITE,
        message="input: line 1: identifier too long, truncated to 1001 characters.", status=1),
    Row("program: string", 100 * MILLION, around('a("', "a", '").'), REWRITE,
        message="input: line 1: identifier too long, truncated to 1001 characters.", status=1),
    Row("program: number", 100 * MILLION, around("a(", "1", ")."), REWRITE,
        message="input: line 1: numeric constant 111", status=1),
    Row("program: comment", 2 * GIGA, around("a.\n%", "c", "\nb."), REWRITE,
        just("a_1(a,default).\na_1(b,default).\n"), mebibytes=STREAMED),
    Row("program: lines of comments", 2 * GIGA // 16, around("a.\n", "% comment lines\n", "b."), REWRITE,
        just("a_1(a,default).\na_1(b,default).\n"), mebibytes=STREAMED),
    Row("program: ASITIS section", GIGA // 16, around("a. ASITIS %*\n", "% comment lines\n", "*%b."), REWRITE,
        just("a_1(a,default).\na_1(b,default).\n"), mebibytes=STREAMED),
    Row("program: queries", POWER, around("", "a?\n", ""), REWRITE,
        lambda size: size * len("Query a_1(a,default) replaces a_1(a,default).\n")
        + len("a_1(a,default)?\n") - len("Query a_1(a,default) replaces a_1(a,default).\n")),
    Row("program: name spaces", POWER, numbered('#namespace(pN,"http://uN#")\n', "a(pN:x).\n"), REWRITE,
        addresses_length),
    Row("whole run: ASITIS section", GIGA // 16, around("a. ASITIS %*\n", "% comment lines\n", "*%b."),
        ["zarel", "-silent", "input"], just("{a, b}\n")),
    Row("whole run: answer sets", 40 * MILLION, around("", SETS[0], ""),
        ["zarel", "-silent", "-solver=./printer", "program"], plus("", SETS[1]), mebibytes=STREAMED, files=PRINTER),
    Row("answers: nested function terms", MILLION, nested("{a_3(p,default,", "f(", "a", ")", ")}"), READ,
        plus("{p(a)}\n", "f()")),
    Row("answers: terms beyond the parser's stack", 10 * MILLION, around("{a_3(p,default,", "f(", ""), READ,
        message="Internal parser invocation: memory exhausted.", is_scaled=False),
    Row("answers: atoms of one set", 10 * MILLION, around("{", "a_2(p, default, 1),", "a_1(a, b)}"), READ,
        plus("{a@b}\n", "p(1), ")),
    Row("answers: string", GIGA, around('{a_2("', "s", '", b)}'), READ, plus('{""@b}\n', "s")),
    Row("answers: string of more than 2 GiB", 3 * GIGA, around('{a_2("', "s", '", b)}'), READ, status=2,
        message="fatal error - scanner input buffer overflow", is_scaled=False),
    Row("dl: nested function terms", MILLION, nested("p(", "f(", "a", ")", ")."), SOLVE,
        message="input:1: a term is nested deeper than 5000 levels", status=1),
    Row("dl: name", 100 * MILLION, around("", "a", "."), SOLVE, plus("{}\n", "a")),
    Row("dl: string", 100 * MILLION, around('a("', "s", '").'), SOLVE, plus('{a("")}\n', "s")),
    Row("dl: number", 100 * MILLION, around("a(", "1", ")."), SOLVE, message="input:1: number 1111", status=1),
    Row("dl: comment", 2 * GIGA, around("a.\n%", "c", "\nb."), SOLVE, just("{a, b}\n")),
    Row("dl: lines of comments", 2 * GIGA // 16, around("a.\n", "% comment lines\n", "b."), SOLVE, just("{a, b}\n")),
    Row("dl: file of more than 2 GiB", 3 * GIGA, around("", "\n", ""), SOLVE, status=1,
        message='dl: "input" has more than 2147483645 bytes', is_scaled=False),
    Row("dl: queries", POWER, around("", "a?\n", ""), SOLVE, status=1,
        message="input:2: a second query; the first is in input, line 1"),
    # Of predicates in turn; a growing key for them took gigabytes.
    Row("dl: pairs of facts", 20_000, numbered("p(N). q(N).\n"), SOLVE, length_of_pairs, mebibytes=STREAMED,
        is_scaled=False),
    Row("dl: include lines", POWER, around("", '#include "more"\n', ""), SOLVE, just("{b}\n"), files={"more": "b."}),
    Row("dl: answer sets", 80 * MILLION, around("", MODELS[0], ""), ["dl", "-clingo=./clingo", "program"],
        plus("", MODELS[1]), mebibytes=STREAMED, files=CLINGO),
]
