# The timed loops of the Python peers; both hand in the same functions, bound their own way.
import time


def timed(passes, body):
    """Nanoseconds of processor time of a pass of body(passes)."""
    body(passes // 10)
    begin = time.process_time_ns()
    body(passes)
    return (time.process_time_ns() - begin) / passes


def run(output, create, release, fill, init, nested, get, set_, get_type, set_type, dump):
    flow = create()
    set_type(flow, 4294967295)
    inside = nested(flow)
    filled = create()
    fill(filled)

    def empty(passes):
        for _ in range(passes):
            pass

    def getter(passes):
        for _ in range(passes):
            get(flow)

    def setter(passes):
        for _ in range(passes):
            set_(flow, 7)

    def great_result(passes):
        for _ in range(passes):
            get_type(flow)

    def nested_getter(passes):
        for _ in range(passes):
            nested(flow)

    def create_free(passes):
        for _ in range(passes):
            release(create())

    def flow_init(passes):
        for _ in range(passes):
            init(flow, 7, 2, inside, inside, 1, 300, 4000, 5, 6)

    def dumps(passes):
        for _ in range(passes):
            dump(filled)

    overhead = timed(200000, empty)
    with open(output, "w", encoding="ascii") as lines:
        for row, passes, body in (
                ("getter", 100000, getter), ("setter", 100000, setter),
                ("nested_getter", 100000, nested_getter), ("flow_init", 50000, flow_init),
                ("create_free", 50000, create_free), ("great_result", 100000, great_result),
                ("dump", 2000, dumps)):
            print(row, timed(passes, body) - overhead, file=lines)
