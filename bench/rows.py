"""What is measured: the rows of the table, each with the figure that it is to reach."""
import os
from dataclasses import dataclass
from random import Random
from typing import Callable

import inputs
from measure import Command

LINEAR = 12    # at ten times the size: what no longer fits a cache counts too


@dataclass
class Trial:
    zarel: Command
    peer: Command
    input_bytes: int


@dataclass
class Figure:
    text: str
    holds: Callable    # of this row's result and all results by name; None: cannot be said
    needs_peer: bool = False


@dataclass
class Row:
    name: str
    size: int
    what: str
    make: Callable    # of the size, the seed and the folder of the programs: a Trial
    figure: Figure
    quick_size: int = None    # takes the place of scaling, and of growth, where time is not linear

    @property
    def grows(self):
        return self.quick_size is None

    def scaled(self, factor):
        if self.quick_size is not None:
            return self.size if factor >= 1 else self.quick_size
        return max(1, round(self.size * factor))

    def trial(self, size, seed, folder):
        return self.make(size, Random(f"{seed} {self.name} {size}"), folder)


# Commands.

def zarel(folder, *words, stdin=os.devnull):
    return Command([os.path.join(folder, "zarel"), "-silent", *words], stdin, is_silent=True)


def zrl(folder, *words):
    return Command([os.path.join(folder, "zrl"), "run", *words], good_statuses=(0, 10))


def zrl_check(folder, *words):
    return Command([os.path.join(folder, "zrl"), "check", *words], is_silent=True)


def dl(folder, *words):
    return Command([os.path.join(folder, "dl"), *words], is_silent=True)


def gringo(path):
    return Command(["gringo", "--text", path])


def clingo(path, answer_sets="0", form="--verbose=0"):
    # Satisfiable, unsatisfiable, and satisfiable with everything enumerated.
    return Command(["clingo", answer_sets, form, path], good_statuses=(0, 10, 20, 30))


def written(path, lines):
    with open(path, "w") as out:
        out.writelines(lines)
    return os.path.getsize(path)


# Kinds of trials.

def rewriting(lines_of, *words, peer=None):
    def make(size, random, folder):
        count = written("in.zrl", lines_of(size, random))
        return Trial(zarel(folder, "-preparsing", *words, "in.zrl"), peer and peer("in.zrl"), count)
    return make


def reading_back(lines_of):
    def make(size, random, folder):
        count = written("answers", lines_of(size, random))
        return Trial(zarel(folder, "-postparsing", stdin="answers"), None, count)
    return make


def one_answer_set(size, random, folder):
    trial = reading_back(inputs.one_answer_set)(size, random, folder)
    with open("answers") as text:
        written("facts.lp", (piece + ".\n" for piece in inputs.atoms_of(text)))
    trial.peer = gringo("facts.lp")
    return trial


def namespaces_read_back(size, random, folder):
    """A prefix is declared in a program only, so this is a whole run; its solver copies a file."""
    written("in.zrl", inputs.namespace_declaration())
    count = written("answers", inputs.qualified_answer_set(size, random))
    written("solver", ["#!/bin/sh\n", "exec cat answers\n"])
    os.chmod("solver", 0o700)
    return Trial(zarel(folder, "-solver=./solver", "in.zrl"), None, count)


def by_zarel(folder, answer_sets):
    return zarel(folder, "-solverparams={-n=%d}" % answer_sets, "in.zrl")


def by_zrl(folder, answer_sets):
    return zrl(folder, "-n", str(answer_sets), "in.zrl")


def by_zrl_in(form):
    return lambda folder, answer_sets: zrl(folder, "-n", str(answer_sets), "--format", form, "in.zrl")


def whole_run(zarel_lines, clingo_lines, answer_sets=0, front_end=by_zarel,
              peer_form="--verbose=0"):
    def make(size, random, folder):
        state = random.getstate()
        count = written("in.zrl", zarel_lines(size, random))
        random.setstate(state)    # the peer gets the same program
        written("in.lp", clingo_lines(size, random))
        return Trial(front_end(folder, answer_sets), clingo("in.lp", str(answer_sets), peer_form),
                     count)
    return make


def choices_read(size, random, folder):
    """The peer's answers are read, as zrl reads those of clingo."""
    trial = whole_run(inputs.choices, inputs.choices_for_clingo, front_end=by_zrl)(size, random, folder)
    trial.peer = Command(["sh", "-c", "clingo 0 --verbose=0 in.lp | cat"])
    return trial


def solver_run(lines_of, *words, has_peer=True):
    def make(size, random, folder):
        count = written("in.dl", lines_of(size, random))
        return Trial(dl(folder, *words, "in.dl"), clingo("in.dl") if has_peer else None, count)
    return make


def asked(lines_of, question):
    """Beside the answer set that is asked about."""
    def make(size, random, folder):
        count = written("in.dl", lines_of(size, random))
        word = question.format(last=size, end=inputs.road_nodes(size))
        return Trial(dl(folder, word, "in.dl"), dl(folder, "-n=1", "in.dl"), count)
    return make


# Until the lines of a conflict are told; its instances, which come behind them, take many solves.
LINES_OF_CONFLICT = ("rm -f told; mkfifo told; \"$0\" -conflict in.dl > told & "
                     "grep -m1 'not go' told; found=$?; kill $! 2> /dev/null; wait; exit $found")


def conflict_by_lines(size, random, folder):
    """Beside the solve that failed."""
    count = written("in.dl", inputs.hidden_clique(size, random))
    told = Command(["sh", "-c", LINES_OF_CONFLICT, os.path.join(folder, "dl")])
    return Trial(told, dl(folder, "in.dl"), count)


def data_read(name, lines_of):
    """Beside the same facts as text: both are read, checked and rewritten."""
    def make(size, random, folder):
        state = random.getstate()
        count = written(name, lines_of(size, random))
        random.setstate(state)
        written("facts.zrl", inputs.sales_facts(size, random))
        written("in.zrl", [f'%! data sold("{name}", id, customer, amount*100)\n'])
        return Trial(zrl_check(folder, "in.zrl"), zrl_check(folder, "facts.zrl"), count)
    return make


# Figures.

def linear_and(text="", holds=lambda result: True, **more):
    def both(result, _):
        return holds(result) and result.small is not None and result.growth <= LINEAR
    return Figure((text + ", " if text else "") + "linear", both, **more)


TEN_TIMES = linear_and("10 times (aim 20), no more memory than the peer",
                       lambda r: r.ratio >= 10 and r.zarel.mebibytes <= r.peer.mebibytes,
                       needs_peer=True)
TEN_TIMES_IN_THREE_TEXTS = linear_and("10 times (aim 20), memory under 3 times the text",
                                      lambda r: r.ratio >= 10
                                      and r.zarel.mebibytes * 1024**2 < 3 * r.trial.input_bytes,
                                      needs_peer=True)


def mb_per_second(least, aim=""):
    return linear_and(f"{least} MB/s{aim}", lambda r: r.speed >= least)


def mb_per_second_and_memory_of_peer(least):
    return Figure(f"{least} MB/s, at most 1.1 times the peer's memory",
                  lambda r, _: r.speed >= least and r.zarel.mebibytes <= 1.1 * r.peer.mebibytes,
                  needs_peer=True)


def times_of_peer(most):
    return Figure(f"at most {most:g} times the peer's time",
                  lambda r, _: r.zarel.seconds <= most * r.peer.seconds, needs_peer=True)


def linear_times_of_peer(most):
    return linear_and(f"at most {most:g} times the peer's time",
                      lambda r: r.zarel.seconds <= most * r.peer.seconds, needs_peer=True)


def times_of_peer_and_memory(most):
    """Of dl and the clingo below it the larger one counts, see measure.Measured."""
    return Figure(f"at most {most:g} times the peer's time and memory",
                  lambda r, _: r.zarel.seconds <= most * r.peer.seconds
                  and r.zarel.mebibytes <= most * r.peer.mebibytes, needs_peer=True)


def speed_of_one_answer_set(result, results):
    """Nine tenths of it are the same speed; memory has to stay where it was."""
    one = results.get("answer-set")
    if one is None or one.zarel.problem is not None or result.small is None:
        return None
    return (result.speed >= 0.9 * one.speed
            and result.zarel.mebibytes <= 1.2 * result.small.mebibytes)


def explained_in(milliseconds):
    """Behind the answer set, whose text is what the peer printed. The memory is that of the largest
    process, mostly clingo, whose peak differs by a hundredth from run to run."""
    return Figure(f"at most {milliseconds:,} ms more than the peer, memory 3 times the answer set's text",
                  lambda r, _: r.zarel.seconds <= r.peer.seconds + milliseconds / 1000
                  and r.zarel.mebibytes <= max(1.02 * r.peer.mebibytes, 3 * r.peer.output_bytes / 1024**2),
                  needs_peer=True)


LINEAR_ONLY = linear_and()
IN_SECONDS = Figure("solves in seconds", lambda r, _: r.zarel.seconds < 10)
NEARLY_AS_FAST_A_START = Figure("at most 3 ms more than the peer",
                                lambda r, _: r.zarel.seconds <= r.peer.seconds + 0.003,
                                needs_peer=True)
FAST_START = Figure("5 ms or less", lambda r, _: r.zarel.seconds <= 0.005)

QUESTIONS = [
    ("why-chain", "ground rules along a chain; why its last atom",
     inputs.chain, "-why=reach({last})"),
    ("whynot-chain", "ground rules along a chain; why not another atom",
     inputs.chain, "-whynot=reach(nowhere)"),
    ("why-closure", "ground rules of a closure; why its longest path",
     inputs.closure, "-why=path(0,{end})"),
    ("why-count", "facts, counted; why they are enough",
     inputs.counted, "-why=enough"),
    ("whynot-closure", "ground rules of a closure; why not a path back",
     inputs.closure, "-whynot=path({end},0)"),
]

ROWS = [
    Row("facts", 1_000_000, "facts of three arguments, rewritten",
        rewriting(inputs.facts, peer=gringo), TEN_TIMES),
    Row("rules", 200_000, "rules of five body literals, rewritten",
        rewriting(inputs.rules), mb_per_second(20, " (aim 30)")),
    Row("answer-set", 1_000_000, "atoms of one answer set, printed",
        one_answer_set, TEN_TIMES_IN_THREE_TEXTS),
    Row("answer-sets", 200_000, "answer sets of 20 atoms, printed",
        reading_back(inputs.many_answer_sets),
        Figure("MB/s of answer-set, memory constant", speed_of_one_answer_set)),
    Row("frames-out", 1_000_000, "frame atoms over a tenth as many objects, printed",
        reading_back(inputs.frame_atoms), LINEAR_ONLY),
    Row("values-out", 200_000, "values of one attribute of one object, printed",
        reading_back(inputs.values_of_one_attribute), LINEAR_ONLY),
    Row("frames-in", 200_000, "frame facts of five attributes, one of them nested, rewritten",
        rewriting(inputs.frames), LINEAR_ONLY),
    Row("templates", 10_000, "distinct invocations in ten times as many clauses",
        rewriting(inputs.distinct_invocations, "-linktemplates"), LINEAR_ONLY),
    Row("one-template", 100_000, "invocations of one signature",
        rewriting(inputs.equal_invocations, "-linktemplates"), LINEAR_ONLY),
    Row("functions", 200_000, "rules with nested function terms, rewritten",
        rewriting(inputs.function_rules), LINEAR_ONLY),
    Row("names-in", 500_000, "qualified constants, rewritten",
        rewriting(inputs.qualified_facts), LINEAR_ONLY),
    Row("names-out", 500_000, "addresses of an answer set, shortened",
        namespaces_read_back, LINEAR_ONLY),
    Row("whole-facts", 500_000, "facts and four rules, solved",
        whole_run(inputs.links, inputs.links), times_of_peer(1.25)),
    Row("whole-search", 11, "pigeons in one hole less, searched",
        whole_run(inputs.pigeons, inputs.pigeons_for_clingo), times_of_peer(1.05),
        quick_size=9),
    Row("zrl-facts", 500_000, "the same, solved by zrl",
        whole_run(inputs.links, inputs.links, front_end=by_zrl), times_of_peer(1.1)),
    Row("zrl-search", 11, "the same pigeons, searched by zrl",
        whole_run(inputs.pigeons, inputs.pigeons_for_clingo, front_end=by_zrl), times_of_peer(1.02),
        quick_size=9),
    Row("zrl-start", 1, "fact, solved by zrl",
        whole_run(inputs.links, inputs.links, front_end=by_zrl), NEARLY_AS_FAST_A_START, quick_size=1),
    Row("zrl-json", 500_000, "the facts again, answered in JSON, as the peer does",
        whole_run(inputs.links, inputs.links, front_end=by_zrl_in("json"), peer_form="--outf=2"),
        times_of_peer(1.1)),
    Row("zrl-sets", 20, "choices, and all their answer sets by zrl",
        choices_read, times_of_peer(1.1), quick_size=12),
    Row("data-csv", 1_000_000, "rows of a CSV file, read and checked by zrl",
        data_read("in.csv", inputs.sales_table), mb_per_second_and_memory_of_peer(25)),
    Row("data-json", 1_000_000, "the same as JSON lines",
        data_read("in.jsonl", inputs.sales_objects), mb_per_second_and_memory_of_peer(25)),
    Row("relations-300", 300, "places, related by a rule for any relation, solved",
        whole_run(inputs.places, inputs.places_for_clingo), times_of_peer_and_memory(1.15),
        quick_size=100),
    Row("relations-600", 600, "the same, more of them",
        whole_run(inputs.places, inputs.places_for_clingo), times_of_peer_and_memory(1.15),
        quick_size=200),
    Row("relations-20", 2_000, "pairs of each of twenty relations, some transitive, solved",
        whole_run(inputs.twenty_relations, inputs.twenty_relations_for_clingo),
        times_of_peer_and_memory(1.15)),
    Row("colouring", 10_000, "nodes with four colours beside a rule for any relation, solved once",
        whole_run(inputs.colouring, inputs.colouring_for_clingo, answer_sets=1),
        times_of_peer_and_memory(1.15)),
    Row("ontology", 50_000, "objects with the values of their classes, in frames, solved",
        whole_run(inputs.ontology, inputs.ontology_for_clingo), times_of_peer_and_memory(1.15)),
    Row("aggregate", 20_000, "objects with an aggregate each in a rule, in frames, solved",
        whole_run(inputs.friends, inputs.friends_for_clingo, front_end=by_zrl), linear_times_of_peer(1.1)),
    Row("join", 20_000, "rows of each of three relations, joined in a bad order, solved",
        whole_run(inputs.three_relations, inputs.three_relations, front_end=by_zrl),
        linear_times_of_peer(1.1)),
    Row("six-variables", 500, "nodes with a constraint over six variables, solved once",
        whole_run(inputs.six_variables, inputs.six_variables_for_clingo, answer_sets=1, front_end=by_zrl),
        times_of_peer(1.1)),
    Row("start", 1, "fact, rewritten", rewriting(inputs.facts, peer=gringo), FAST_START, quick_size=1),
    Row("dl-translation", 1_000_000, "facts and rules in the solver's language, translated",
        solver_run(inputs.solver_program, "-translate", has_peer=False), mb_per_second(40)),
    Row("dl-long-body", 100_000, "literals of one body, solved",
        solver_run(inputs.long_body), IN_SECONDS),
    *(Row(f"{name}-{short}", size, what,
          asked(lines_of, question), explained_in(milliseconds), quick_size=1_000)
      for name, what, lines_of, question in QUESTIONS
      for short, size, milliseconds in (("1k", 1_000, 1), ("100k", 100_000, 100),
                                        ("1m", 1_000_000, 1_500))),
    Row("conflict", 10_000, "nodes with a clique that three colours do not suffice for, by lines",
        conflict_by_lines, times_of_peer(5), quick_size=100),
    Row("dl-rules", 200_000, "distinct rules, solved",
        solver_run(inputs.distinct_rules), times_of_peer_and_memory(1.1)),
]
