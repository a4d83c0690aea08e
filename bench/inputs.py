"""The inputs of all rows, line by line: none is ever held in memory as a whole, for a process that
this program starts counts this program's memory as its own."""

NODES_PER_FACT = 10
ADDRESS = "http://example.org/ontology#"


def below(random, limit):
    return int(random.random() * limit)    # several times as fast as randrange


# Programs in Zarel's language.

def facts(size, random):
    nodes = max(1, size // NODES_PER_FACT)
    for _ in range(size):
        yield f"edge(n{below(random, nodes)},n{below(random, nodes)},{below(random, 1000)}).\n"


def rules(size, random):
    for _ in range(size):
        p, q, r, s, t = (below(random, 1000) for _ in range(5))
        yield (f"path{p}(X,Y) :- edge{q}(X,Z), link{r}(Z,Y,{t}), Z < Y, "
               f'label(X,"name {s}"), not closed{t}(Y).\n')


def frames(size, random):
    for i in range(size):
        a, b, c, d, e = (below(random, 1000) for _ in range(5))
        yield (f"o{i}[name->n{a}, age->{b}, likes->>{{t{c},t{d}}}, lives->c{e}, "
               f"owns->h{i}[rooms->{a}]].\n")


def function_rules(size, random):
    for _ in range(size):
        p, q, r, s = (below(random, 1000) for _ in range(4))
        yield f"p{p}(f(X,g(Y)),Z) :- q{q}(g(f{r}(X)),Y), r{r}(h(Z,k(c{s})),X).\n"


def namespace_declaration():
    yield f'#namespace(ex,"{ADDRESS}")\n'
    yield "known(ex:one).\n"    # prefixes are shown where a program uses one


def qualified_facts(size, random):
    yield f'#namespace(ex,"{ADDRESS}")\n'
    for _ in range(size // 2):
        yield f"likes(ex:p{below(random, size)},ex:p{below(random, size)}).\n"


CLOSURE = ("#template closure{step(2)}(2) {\n"
           "  closure(X,Y) :- step(X,Y).\n"
           "  closure(X,Z) :- closure(X,Y), step(Y,Z).\n"
           "}\n")


def distinct_invocations(size, random):
    yield CLOSURE
    for i in range(size):
        for _ in range(9):
            yield f"edge{i}(n{below(random, 100)},n{below(random, 100)}).\n"
        yield f"reach(X,Y) :- closure{{edge{i}(*,*)}}(X,Y).\n"


def equal_invocations(size, _):
    yield CLOSURE
    for i in range(size):
        yield f"reach{i}(X) :- start{i}(Y), closure{{edge(*,*)}}(Y,X).\n"


# Programs that Zarel, dl and clingo read alike, or nearly.

def links(size, random):
    nodes = max(1, size // NODES_PER_FACT)
    for i in range(size):
        yield f"link(n{below(random, nodes)},n{below(random, nodes)},{i % 1000}).\n"
    yield "heavy(X,Y) :- link(X,Y,W), W > 900.\n"
    yield "both(X,Y) :- link(X,Y,W), link(Y,X,V), X != Y.\n"
    yield "busy(X) :- heavy(X,Y), heavy(X,Z), Y != Z.\n"
    yield "idle(X) :- link(X,Y,W), not busy(X).\n"


def pigeons(size, _, disjunction=" v "):
    for i in range(size):
        yield f"pigeon({i}).\n"
    holes = disjunction.join(f"in(P,{hole})" for hole in range(size - 1)) or "in(P,0)"
    yield f"{holes} :- pigeon(P).\n"
    yield ":- in(P,H), in(Q,H), P < Q.\n"


def pigeons_for_clingo(size, random):
    return pigeons(size, random, " ; ")


def solver_program(size, random):
    """Four facts to one rule, in the form that Zarel writes."""
    nodes = max(1, size // NODES_PER_FACT)
    for i in range(size):
        x, y, k = below(random, nodes), below(random, nodes), below(random, 1000)
        if i % 5:
            yield f"a_4(edge,default,n{x},n{y},{k}).\n"
        else:
            yield (f"a_3(path{k},default,X,Y) :- a_3(edge{k},default,X,Z), a_4(link,default,Z,Y,{k}),"
                   f' <(Z,Y), a_3(label,default,X,"name {k}"), not a_2(closed,default,Y).\n')


def long_body(size, random):
    """A chain of joins through every literal: each shares a variable with the next."""
    yield "e(1,1).\n"
    yield "long(X0) :- " + ", ".join(f"e(X{i},X{i + 1})" for i in range(size)) + ".\n"


def distinct_rules(size, _):
    yield "node(a).\n"
    for i in range(size):
        yield f"p{i}(X) :- node(X), not q{i}(X).\n"


# What the solver prints.

def joined(atoms):
    """One answer set, piece by piece."""
    separator = "{"
    for atom in atoms:
        yield separator + atom
        separator = ", "
    yield "}\n"


def answer_atom(random, nodes):
    return f"a_4(edge,default,n{below(random, nodes)},n{below(random, nodes)},{below(random, 1000)})"


def one_answer_set(size, random):
    nodes = max(1, size // NODES_PER_FACT)
    return joined(answer_atom(random, nodes) for _ in range(size))


def atoms_of(text):
    """The atoms of such an answer set, read in pieces."""
    rest = ""
    while piece := text.read(1 << 16):
        *whole, rest = (rest + piece).lstrip("{").split(", ")
        yield from whole
    yield rest.rstrip("}\n")


def many_answer_sets(size, random):
    for _ in range(size):
        yield from joined(answer_atom(random, 100_000) for _ in range(20))


def frame_atoms(size, random):
    objects = max(1, size // 10)
    return joined(f'a_5(valueOf,defaultFlogic,o{below(random, objects)},attribute{below(random, 20)},'
                  f'v{below(random, 1000)},"->>")' for _ in range(size))


def values_of_one_attribute(size, _):
    return joined(f'a_5(valueOf,defaultFlogic,o,attribute,v{i},"->>")' for i in range(size))


def qualified_answer_set(size, random):
    return joined(f'a_3(likes,default,"{ADDRESS}p{below(random, size)}","{ADDRESS}p{below(random, size)}")'
                  for _ in range(size // 2))
