#!/usr/bin/env python3
"""Shows that each check finds what it is there to find, on small trees with one fault each."""

import os
import pathlib
import shutil
import sys
import tempfile
import unittest

import comments
import floors
import headers
import layout
import registered
import shipped
import sources
import symbols
import tree
import words

sys.path.append(str(tree.ROOT / "scripts"))
import doxygen_filter  # noqa: E402
import guide_program  # noqa: E402

GUARDED = "#ifndef {0}\n#define {0}\n{1}\n#endif\n"


class CheckTest(unittest.TestCase):
    def setUp(self):
        self.root = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.root)

    def write(self, place, text):
        path = self.root / place
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def assert_finds(self, result, expected):
        problems, _ = result
        self.assertEqual(len(problems), 1, problems)
        self.assertIn(expected, problems[0])

    def assert_clean(self, result):
        problems, looked_at = result
        self.assertEqual(problems, [])
        self.assertGreater(looked_at, 0)


class Floors(CheckTest):
    def check_include(self, place, line):
        self.write(place, line + "\n")
        return floors.check(self.root)

    def test_what_stands_below_may_be_included(self):
        self.assert_clean(
            self.check_include("pxdutil/quotes/a.h", "#include <pxdutil/sessions/session.h>")
        )

    def test_what_stands_above_may_not(self):
        self.assert_finds(
            self.check_include("pxdutil/sessions/a.cpp", "#include <pxdutil/quotes/quote.h>"),
            "pxdutil/sessions/a.cpp:1: <pxdutil/quotes/quote.h>: quotes doesn't stand below",
        )

    def test_query_stands_on_foundation_and_sessions_alone(self):
        self.assert_clean(
            self.check_include("pxdutil/query/a.h", "#include <pxdutil/sessions/session.h>")
        )
        self.assert_finds(
            self.check_include("pxdutil/query/a.h", "#include <pxdutil/quotes/quote.h>"),
            "quotes doesn't stand below query",
        )

    def test_quoted_includes_are_refused(self):
        self.assert_finds(self.check_include("pxdutil/quotes/a.h", '#include "b.h"'), '"b.h"')

    def test_foreign_headers_are_refused(self):
        self.assert_finds(self.check_include("pxdutil/quotes/a.h", "#include <csv.h>"), "<csv.h>")
        self.assert_finds(self.check_include("pxdutil/quotes/a.h", "# include <fmt/a>"), "<fmt/a>")

    def test_the_platforms_headers_are_for_sources(self):
        self.assert_clean(self.check_include("pxdutil/quotes/a.cpp", "#include <unistd.h>"))
        self.assert_finds(
            self.check_include("pxdutil/quotes/b.h", "#include <unistd.h>"), "<unistd.h>"
        )

    def test_the_umbrella_is_for_users(self):
        self.assert_finds(
            self.check_include("pxdutil/quotes/a.h", "#include <pxdutil/pxdutil.h>"), "users alone"
        )

    def test_a_new_folder_needs_a_floor(self):
        self.assert_finds(self.check_include("pxdutil/cellar/a.h", ""), "has no floor")


class Sources(CheckTest):
    def test_a_listed_source_passes(self):
        self.write("pxdutil/quotes/a.cpp", "")
        self.write("pxdutil/quotes/CMakeLists.txt", "pxdutil_room_sources(\n  a.cpp)\n")
        self.assert_clean(sources.check(self.root))

    def test_a_forgotten_source_is_found(self):
        self.write("pxdutil/quotes/a.cpp", "")
        self.write("pxdutil/quotes/CMakeLists.txt", "pxdutil_room_sources(aa.cpp)  # a.cpp\n")
        self.assert_finds(sources.check(self.root), "a.cpp: in no CMakeLists.txt")

    def test_harness_and_benchmark_are_listed_by_name(self):
        self.write("fuzz/fuzz_lines.cpp", "")
        self.write("fuzz/CMakeLists.txt", "pxdutil_fuzz(lines)\n")
        self.write("bench/quotes_bench.cpp", "")
        self.write("bench/CMakeLists.txt", "pxdutil_bench(quotes)\n")
        self.assert_clean(sources.check(self.root))

    def test_a_harness_of_a_longer_name_is_not_enough(self):
        self.write("fuzz/fuzz_lines.cpp", "")
        self.write("fuzz/CMakeLists.txt", "pxdutil_fuzz(lines_long)\n")
        self.assert_finds(sources.check(self.root), "fuzz_lines.cpp")

    def test_projects_below_may_share_a_source(self):
        self.write("tests/consumers/main.cpp", "")
        self.write("tests/consumers/one/CMakeLists.txt", "add_executable(one ../main.cpp)\n")
        self.assert_clean(sources.check(self.root))


class Words(CheckTest):
    def test_a_machines_path_is_found(self):
        for path in ["/home/somebody/x", "/tmp/x", "see /root/x", "C:\\Users\\x"]:
            with self.subTest(path):
                self.write("docs/a.md", path + "\n")
                self.assert_finds(words.check(self.root), "docs/a.md:1: a path of one machine")

    def test_a_path_from_the_environment_or_below_another_passes(self):
        self.write("docs/a.md", "${TMPDIR:-/tmp}/x, data/home/x, https://example.com/home/x\n")
        self.assert_clean(words.check(self.root))

    def test_work_put_off_is_found(self):
        self.write("pxdutil/a.cpp", "// TO" + "DO: later\n")
        self.assert_finds(words.check(self.root), "work that was put off")


class Headers(CheckTest):
    compiler = os.environ.get("CXX", "c++")

    def write_header(self, name, body, guard=None):
        self.write(f"pxdutil/quotes/{name}.h", GUARDED.format(guard or name.upper(), body))

    def write_umbrella(self, *names):
        lines = "\n".join(f"#include <pxdutil/quotes/{name}.h>" for name in names)
        self.write("pxdutil/pxdutil.h", GUARDED.format("ALL", lines))

    def test_whole_headers_pass(self):
        self.write_header("a", "#include <vector>\ninline std::vector<int> f() { return {}; }")
        self.write_umbrella("a")
        self.assert_clean(headers.check(self.root, self.compiler))

    def test_a_header_that_leans_on_another_is_found(self):
        self.write_header("a", "inline std::vector<int> f() { return {}; }")
        self.write_umbrella("a")
        self.assert_finds(headers.check(self.root, self.compiler), "doesn't compile alone")

    def test_the_umbrella_must_be_whole(self):
        self.write_header("a", "")
        self.write_header("b", "")
        self.write_umbrella("a")
        self.assert_finds(
            headers.check(self.root, self.compiler), "lacks #include <pxdutil/quotes/b.h>"
        )

    def test_the_umbrella_includes_nothing_private(self):
        self.write_header("a", "")
        self.write("pxdutil/quotes/detail/c.h", GUARDED.format("C", ""))
        self.write_umbrella("a", "detail/c")
        self.assert_finds(headers.check(self.root, self.compiler), "which is no public header")

    def test_the_umbrella_can_be_written_anew(self):
        self.write_header("a", "")
        self.write("pxdutil/query/b.h", GUARDED.format("B", ""))
        self.write_umbrella()
        headers.write_umbrella(self.root, tree.public_headers(self.root))
        self.assert_clean(headers.check(self.root, self.compiler))

    def test_guards_are_there_and_differ(self):
        self.write_header("a", "")
        self.write_header("b", "", guard="A")
        self.write_umbrella("a", "b")
        self.assert_finds(headers.check(self.root, self.compiler), "has the guard of")


class Comments(CheckTest):
    def check_header(self, text):
        self.write("pxdutil/quotes/a.h", "// Nothing much.\n#ifndef A_H\n#define A_H\n\n" + text)
        return comments.check(self.root)

    def test_told_above_in_a_group_and_behind(self):
        self.assert_clean(
            self.check_header(
                "// What it does.\nvoid f(int);\nvoid g();\n"
                "inline constexpr int kA = 1;  // the first\n"
                "inline constexpr int kB = 2;  // the second,\n"
                "                              // which goes on here\n"
            )
        )

    def test_every_kind_of_declaration_is_found(self):
        for text, what in [
            ("void f(std::vector<int> v = {1});", "function f"),
            ("template <class T, class U = std::vector<T>>\nT f(U u) { return u; }", "function f"),
            ("inline constexpr int k[2] = {1, 2};", "variable k"),
            ("inline constexpr std::array<int, 2> k{1, 2};", "variable k"),
            ("using A = int;", "alias A"),
            ("enum A : int { x };", "enum A"),
            ("#define A 1", "macro A"),
            ("#define A(x) \\\n  f(x)", "macro A"),
            ("class API A final : public B {};", "class A"),
            ("namespace n {\nvoid f();\n}", "function n::f"),
            ("bool operator==(const A&, const A&);", "function operator=="),
        ]:
            with self.subTest(text):
                found = [one for one in self.check_header(text + "\n")[0] if what + " has" in one]
                self.assertEqual(len(found), 1)

    def test_members_and_enumerators_need_their_own(self):
        self.assert_finds(
            self.check_header("// A.\nstruct A {\n  // x.\n  int x : 3;\n\n  int y = 0;\n};\n"),
            "pxdutil/quotes/a.h:10: variable A::y has no comment",
        )
        self.assert_finds(
            self.check_header("// A.\nenum class A {\n  x,  // first\n  y,\n};\n"), "enumerator A::y"
        )
        self.assert_clean(self.check_header("// A: x or y.\nenum A { x, y };\n"))

    def test_a_blank_line_ends_a_group(self):
        self.assert_finds(self.check_header("// f.\nvoid f();\n\nvoid g();\n"), "function g")

    def test_a_comment_behind_is_for_its_own_line(self):
        self.assert_finds(self.check_header("int a;  // a\nint b;\n"), "variable b")

    def test_the_first_paragraph_introduces_classes(self):
        self.assert_clean(self.introduced("A and B: both."))
        self.assert_finds(self.introduced("A: one.\n//\n// B comes later."), "class B")

    def introduced(self, words):
        self.write("pxdutil/quotes/a.h", f"// {words}\n\nclass A {{}};\n\nclass B {{}};\n")
        return comments.check(self.root)

    def test_what_nobody_can_reach_needs_none(self):
        self.assert_clean(
            self.check_header(
                "// A.\nclass A : public C {\n  int x;\n\n public:\n  ~A();\n"
                "  A(const A&) = delete;\n\n  void f() const override { x = 1; }\n\n"
                "  void g(pxd::detail::T);\n\n private:\n  void h();\n};\n"
                "namespace pxd::detail {\nvoid f();\n}\nclass D;\nvoid A::h() {}\n"
            )
        )
        self.assert_finds(
            self.check_header("// A.\nclass A {\n protected:\n  void f();\n};\n"), "A::f"
        )

    def test_a_body_hides_what_stands_in_it(self):
        self.assert_clean(
            self.check_header(
                "// A.\nstruct A {\n  // Makes one.\n  A() : x{1}, y(2) { int z = 0; }\n"
                "  int x;\n  int y;\n};\n"
            )
        )


class Site(unittest.TestCase):
    HEADER = (
        "// A: one <thing>.\n//\n//   A a;\n#ifndef A_H\n#define A_H\n\nclass A {\n public:\n"
        "  // Sums.\n  int f();\n  int g();\n  int x = 0;  // at % first\n};\n\n#endif\n"
    )

    def setUp(self):
        self.lines = doxygen_filter.filtered(self.HEADER).split("\n")

    def test_every_declaration_stays_on_its_line(self):
        for ours, theirs in zip(self.HEADER.split("\n"), self.lines, strict=True):
            self.assertIn(ours.partition("//")[0].strip(), theirs)

    def test_comments_become_doxygens(self):
        self.assertEqual(self.lines[0], "/// @opening A: one \\<thing\\>.")
        self.assertEqual(self.lines[2], "///        A a;")
        self.assertEqual(self.lines[6], "/** One \\<thing\\>. */ class A {")
        self.assertEqual(self.lines[8], "  /// Sums.")
        self.assertEqual(self.lines[10], "  /** Sums. */ int g();")
        self.assertEqual(self.lines[11], "  int x = 0;  ///< at \\% first")

    def test_a_guide_is_one_program(self):
        guide = "# G\n```cpp\nint x = 1;\n```\n```text\n1\n```\n```cpp\nstruct S {};\n```\n"
        program, output = guide_program.program_and_output(guide, "g.md")
        self.assertEqual(output, "1\n")
        self.assertTrue(
            program.endswith(
                '#line 9 "g.md"\nstruct S {};\nint main() {\n#line 3 "g.md"\nint x = 1;\n}\n'
            )
        )


class Registered(CheckTest):
    def check_source(self, text, names):
        self.write("tests/quotes/a_test.cpp", text)
        return registered.check(self.root, names)

    def test_every_kind_of_test_is_recognised(self):
        self.assert_clean(
            self.check_source(
                "TEST(A, One) {}\nTEST_F(B, Two) {}\nTEST_P(C, Three) {}\nTYPED_TEST(D, Four) {}\n"
                "TYPED_TEST(E, Five) {}\n",
                ["A.One", "B.Two", "All/C.Three/7", "D/0.Four", "E.Five<int>"],
            )
        )

    def test_a_test_that_ctest_does_not_know_is_found(self):
        self.assert_finds(
            self.check_source("TEST(A, One) {}\nTEST(A,\n     Two) {}\n", ["A.One"]),
            "A.Two is not registered",
        )

    def test_a_parametrised_suite_without_an_instance_is_found(self):
        self.assert_finds(self.check_source("TEST_P(C, Three) {}\n", ["C.Thre"]), "C.Three")

    def test_a_disabled_test_is_found(self):
        self.assert_finds(
            self.check_source("TEST(A, DISABLED_One) {}\n", ["A.DISABLED_One"]), "is disabled"
        )

    def test_a_source_without_tests_is_found(self):
        self.assert_finds(self.check_source("// TEST(A, One) {}\n", []), "declares no test")

    def test_a_test_of_some_builds_alone_is_left_out(self):
        self.assert_clean(
            self.check_source("TEST(A, One) {}\n#if X\nTEST(A, Two) {}\n#endif\n", ["A.One"])
        )


class Symbols(CheckTest):
    PUBLIC = {"CFile", "ValueRecord", "CException", "FindExchange"}

    def check_symbols(self, *rows, listed=()):
        problems, looked_at, _ = symbols.check(rows, listed, self.PUBLIC)
        return problems, looked_at

    def test_what_is_public_and_listed_passes(self):
        self.assert_clean(
            self.check_symbols(
                ("T", "CFile::Close()", 9),
                ("V", "vtable for CFile", 64),
                ("V", "typeinfo for CException*", 8),
                ("T", "pxd::FindExchange(unsigned short)", 9),
                listed=[
                    "CFile::Close()",
                    "vtable for CFile, 64 bytes",
                    "typeinfo for CException*",
                    "pxd::FindExchange(unsigned short)",
                ],
            )
        )

    def test_what_inlining_decides_is_not_listed_but_must_be_public(self):
        self.assert_clean(self.check_symbols(("W", "pxd::ValueRecord<CFile>::IsNull() const", 9)))
        for name in (
            "void std::__detail::__to_chars_10_impl<unsigned int>(char*, unsigned int, unsigned int)",
            "pxd::detail::Parse(CFile&)",
            "CHidden::Open(CFile&)",
        ):
            self.assert_finds(self.check_symbols(("W", name, 9)), "in no public header")

    def test_a_new_a_lost_and_a_grown_symbol_are_found(self):
        self.assert_finds(self.check_symbols(("T", "CFile::Open()", 9)), "+CFile::Open()")
        self.assert_finds(
            self.check_symbols(("W", "CFile::Close()", 9), listed=["CFile::Open()"]),
            "-CFile::Open()",
        )
        problems, _ = self.check_symbols(
            ("V", "vtable for CFile", 72), listed=["vtable for CFile, 64 bytes"]
        )
        self.assertEqual(
            problems, ["-vtable for CFile, 64 bytes", "+vtable for CFile, 72 bytes"]
        )


    def test_what_users_need_must_be_exported(self):
        def find(name):
            used, in_static = {"a", "b"}, {"a", "c"}
            return symbols.missing(used, in_static, {"c"}, self.PUBLIC, lambda names: [name])

        self.assertEqual(find("CFile::Close()"), ["CFile::Close(): used, and not exported"])
        self.assertEqual(find("pxd::detail::Parse(CFile&)"), [])
        self.assertEqual(symbols.missing({"a"}, {"a"}, {"a"}, self.PUBLIC), [])


class Layout(CheckTest):
    def test_classes_are_found_with_their_namespaces(self):
        text = (
            "class CFile;\nclass PXDUTIL_API CFile : public CObject {\n};\nstruct ROW {\n"
            "  struct Inner {\n  };\n};\nnamespace pxd {\nstruct Stamp final {\n};\n"
            "template <class T>\nstruct Any {\n};\n}  // namespace pxd\n"
            "namespace pxd::detail {\nclass Hidden {\n};\n}  // namespace pxd::detail\n"
        )
        self.assertEqual(layout.classes_in(text), ["CFile", "ROW", "pxd::Stamp"])

    def test_a_class_that_grew_is_found(self):
        problems, _ = layout.check(["A: 4 bytes, aligned to 4"], ["A: 8 bytes, aligned to 4"])
        self.assertEqual(problems, ["-A: 4 bytes, aligned to 4", "+A: 8 bytes, aligned to 4"])
        self.assert_clean(layout.check(["A: 4 bytes, aligned to 4"], ["A: 4 bytes, aligned to 4"]))


class Shipped(CheckTest):
    def test_missing_and_unexpected_files_are_found(self):
        self.write("lib/a", "")
        self.write("lib/b", "")
        self.assertEqual(
            shipped.differences("prefix", shipped.files_below(self.root), {"lib/b", "lib/c"}),
            ["prefix: lib/c: missing", "prefix: lib/a: not expected"],
        )


if __name__ == "__main__":
    unittest.main()
