"""The inputs of all rows, line by line: none is ever held in memory as a whole, for a process that
this program starts counts this program's memory as its own."""

from math import isqrt

NODES_PER_FACT = 10
ADDRESS = "http://example.org/ontology#"


def below(random, limit):
    return int(random.random() * limit)    # several times as fast as randrange


# Programs in Zarel's language.

def facts(size, random):
    nodes = max(1, size // NODES_PER_FACT)
    for _ in range(size):
        yield f"edge(n{below(random, nodes)},n{below(random, nodes)},{below(random, 1000)}).\n"


def sales(size, random):
    customers = max(1, size // 10)
    for i in range(size):
        yield i, f"customer_{below(random, customers)}", below(random, 100_000)


def sales_table(size, random):
    yield "id,customer,amount\n"
    for i, customer, cents in sales(size, random):
        yield f"{i},{customer},{cents // 100}.{cents % 100:02}\n"


def sales_objects(size, random):
    for i, customer, cents in sales(size, random):
        yield f'{{"id": {i}, "customer": "{customer}", "amount": {cents // 100}.{cents % 100:02}}}\n'


def sales_facts(size, random):
    return (f"sold({i},{customer},{cents}).\n" for i, customer, cents in sales(size, random))


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


# Programs with variables for relations and attributes, and as clingo gets them from somebody who
# writes the rule for each relation.

def symmetric_relations(names):
    """The rule that any relation may be symmetric, with a variable or for these relations."""
    if names is None:
        yield "R(Y,X) :- symmetric(R), R(X,Y).\n"
    for name in names or ():
        yield f"{name}(Y,X) :- symmetric({name}), {name}(X,Y).\n"


def places(size, _, names=None):
    """Some relations among places, the closure of one of them, and what it leaves apart."""
    for i in range(size):
        yield f"place(p{i}). rail(p{i},p{i * 7 % size}). ferry(p{i},p{i * 11 % size}).\n"
        yield f"path(p{i},p{i * 3 % size}). border(p{i},p{i * 5 % size}). sight(p{i},p{(i + 2) % size}).\n"
        if i % 100:
            yield f"road(p{i - 1},p{i}).\n"
    yield "symmetric(road).\n"
    yield "reach(X,Y) :- road(X,Y).\n"
    yield "reach(X,Z) :- reach(X,Y), road(Y,Z).\n"
    yield "apart(X,Y) :- place(X), place(Y), not reach(X,Y).\n"
    yield from symmetric_relations(names)


def places_for_clingo(size, random):
    names = ("road", "rail", "ferry", "path", "border", "sight", "reach", "apart")
    return places(size, random, names)


def twenty_relations(size, random, names=None):
    """Five of them transitive, and four rules with negation on top."""
    relations = [f"rel{i}" for i in range(20)]
    for i in range(size):
        for name in relations:
            yield f"{name}(n{i},n{i // 2}).\n" if i else ""
    for name in relations[:5]:
        yield f"transitive({name}).\n"
    if names is None:
        yield "R(X,Z) :- transitive(R), R(X,Y), R(Y,Z).\n"
    for name in names or ():
        yield f"{name}(X,Z) :- transitive({name}), {name}(X,Y), {name}(Y,Z).\n"
    yield "lone0(X,Y) :- rel0(X,Y), not rel5(X,Y).\n"
    yield "lone1(X,Y) :- rel1(X,Y), not rel6(X,Y), not lone0(Y,X).\n"
    yield "lone2(X,Y) :- rel2(X,Y), not rel7(X,Y), not lone1(Y,X).\n"
    yield "lone3(X,Y) :- rel3(X,Y), not lone2(X,Y).\n"


def twenty_relations_for_clingo(size, random):
    names = [f"rel{i}" for i in range(20)] + [f"lone{i}" for i in range(4)]
    return twenty_relations(size, random, names)


def colouring(size, random, names=None, disjunction=" v "):
    """Four colours for a graph, beside a rule that has nothing to do with it."""
    for i in range(size):
        yield f"node(n{i}). e(n{i},n{(i + 1) % size}). e(n{i},n{(7 * i + 1) % size}).\n"
    yield disjunction.join(f"c(X,{c})" for c in ("red", "green", "blue", "grey")) + " :- node(X).\n"
    yield ":- e(X,Y), c(X,C), c(Y,C), X != Y.\n"
    yield "same(X,Y) :- e(X,Y), c(X,C), c(Y,C).\n"
    yield "symmetric(married). married(ann,bob).\n"
    yield from symmetric_relations(names)


def colouring_for_clingo(size, random):
    return colouring(size, random, ("e", "c", "same", "married"), " ; ")


CLASSES = 2000
ATTRIBUTES = [f"attribute{i}" for i in range(20)]


def ontology_facts(size, random, member, subclass, given, owned):
    for i in range(1, CLASSES):
        yield subclass(f"c{i}", f"c{i // 10}")
    for i in range(CLASSES):
        yield given(f"c{i}", ATTRIBUTES[below(random, 20)], f"v{below(random, 100)}")
    for i in range(size):
        yield member(f"o{i}", f"c{below(random, CLASSES)}")
        yield owned(f"o{i}", "likes", f"v{below(random, 100)}")


def ontology(size, random):
    """Values that objects have from their classes, unless a class in between gives another."""
    yield from ontology_facts(size, random,
                              lambda o, c: f"{o} : {c}.\n", lambda c, d: f"{c} :: {d}.\n",
                              lambda c, a, v: f"{c}[{a} *-> {v}].\n", lambda o, a, v: f"{o}[{a} -> {v}].\n")
    yield "C :: E :- C :: D, D :: E.\n"
    yield "X : D :- X : C, C :: D.\n"
    yield "X[A -> V] :- X : C, C[A *-> V], not hidden(X,A,C).\n"
    yield "hidden(X,A,C) :- X : D, D :: C, D[A *-> V], C[A *-> W].\n"


def ontology_for_clingo(size, random):
    yield from ontology_facts(size, random,
                              lambda o, c: f"instance_of({o},{c}).\n", lambda c, d: f"subclass_of({c},{d}).\n",
                              lambda c, a, v: f"{a}_given({c},{v}).\n", lambda o, a, v: f"{a}({o},{v}).\n")
    yield "subclass_of(C,E) :- subclass_of(C,D), subclass_of(D,E).\n"
    yield "instance_of(X,D) :- instance_of(X,C), subclass_of(C,D).\n"
    for a in ATTRIBUTES:
        yield f"{a}(X,V) :- instance_of(X,C), {a}_given(C,V), not hidden(X,{a},C).\n"
        yield f"hidden(X,{a},C) :- instance_of(X,D), subclass_of(D,C), {a}_given(D,V), {a}_given(C,W).\n"


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


def choices(size, _, disjunction=" v "):
    """Of two each, so that there are two to the power of the size."""
    return (f"in({i}){disjunction}out({i}).\n" for i in range(size))


def choices_for_clingo(size, random):
    return choices(size, random, " ; ")


# Programs whose answer sets, or want of one, are explained.

def chain(size, _):
    """As many ground rules, each of which needs the one before."""
    for i in range(size):
        yield f"edge({i},{i + 1}).\n"
    yield "reach(0).\n"
    yield "reach(Y) :- reach(X), edge(X,Y).\n"


def closure(size, _):
    """Paths along a road: half the square of its nodes are the ground rules."""
    for i in range(road_nodes(size)):
        yield f"edge({i},{i + 1}).\n"
    yield "path(X,Y) :- edge(X,Y).\n"
    yield "path(X,Z) :- path(X,Y), edge(Y,Z).\n"


def counted(size, _):
    """As many elements of one aggregate."""
    for i in range(size):
        yield f"element({i}).\n"
    yield f"enough :- {size // 2} <= #count{{X : element(X)}}.\n"


def road_nodes(size):
    return max(2, isqrt(2 * size))


def hidden_clique(size, _):
    """Three colours for a graph that four of its nodes do not let have them."""
    for i in range(size):
        yield f"node({i}). e({i},{(i + 1) % size}). e({i},{(7 * i + 3) % size}).\n"
    for i in range(4):
        for j in range(i):
            yield f"e({size // 2 + 5 * i},{size // 2 + 5 * j}).\n"
    yield "c(X,red) v c(X,green) v c(X,blue) :- node(X).\n"
    yield ":- e(X,Y), c(X,C), c(Y,C), X != Y.\n"


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


def friends(size, random):
    """Objects with three friends each, who are counted."""
    for i in range(size):
        one, two, three = (below(random, size) for _ in range(3))
        yield f"o{i} : person. o{i}[friend->>{{o{one},o{two},o{three}}}].\n"
    yield "friends(X,N) :- X : person, N = #count{Y : X[friend->>Y]}.\n"


def friends_for_clingo(size, random):
    for i in range(size):
        yield f"instance_of(o{i},person).\n"
        for _ in range(3):
            yield f"friend(o{i},o{below(random, size)}).\n"
    yield "friends(X,N) :- instance_of(X,person), N = #count{Y : friend(X,Y)}.\n"


def three_relations(size, random):
    """Joined from their ends: the first two literals of the body share no variable."""
    for i in range(size):
        b, c = below(random, size), below(random, size)
        yield f"r(a{i},b{b}). s(b{i},c{c}). t(c{b},d{i}).\n"
    yield "joined(A,D) :- r(A,B), t(C,D), s(B,C).\n"


def six_variables(size, random, disjunction=" v "):
    """Chosen nodes of a graph with four times as many edges, and ways of five edges that are refused."""
    for i in range(size):
        yield f"in(n{i}){disjunction}out(n{i}).\n"
        for _ in range(4):
            yield f"e(n{below(random, size)},n{below(random, size)}).\n"
    yield ":- in(A), e(A,B), e(B,C), in(C), e(C,D), e(D,E), e(E,F), in(F), A != F.\n"


def six_variables_for_clingo(size, random):
    return six_variables(size, random, " ; ")


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
