#include "automation/automation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "automation/sampledialog.h"
#include "model/services/registry.h"
#include "support/files.h"

namespace {

struct SExchange {
  CString request, response = {};
};
CString Press(const CString& command) { return R"({"op": "press", "command": ")" + command + "\"}"; }
CString New(const CString& design, const CString& kind = "CPcbDesign") {
  return R"({"op": "new", "design": ")" + design + R"(", "kind": ")" + kind + "\"}";
}
CString AtPath(const CString& operation, const CString& design, const CString& path) {
  return R"({"op": ")" + operation + R"(", "design": ")" + design + R"(", "path": ")" + path + "\"}";
}

/// What CAutomation answers to a script. A dialog of the test is shown first; the script begins inside it.
class AutomationTest : public ::testing::Test {
 protected:
  ~AutomationTest() override {
    InstallSettingsStore(nullptr);
    CApplication::SetEditions({"Pellam"});
  }

  CString Play(const CString& script, CDialog* dialog = nullptr) {
    std::istringstream in(script);
    std::ostringstream out;
    CAutomation automation(in, out);
    if (dialog) m_result = dialog->DoModal();
    m_ok = automation.Run();
    return out.str();
  }
  /// Sends all requests and compares each response, in which what most have in common is left out: an empty one is a
  /// plain "ok", one that begins with "!" is none.
  void Talk(std::initializer_list<SExchange> exchanges, CDialog* dialog = nullptr) {
    CString script;
    for (const SExchange& one : exchanges) script += one.request + '\n';
    std::istringstream responses(Play(script, dialog));
    for (const SExchange& one : exchanges) {
      CString response;
      ASSERT_TRUE(std::getline(responses, response)) << one.request;
      EXPECT_EQ(Short(response), one.response) << one.request;
    }
    EXPECT_EQ(responses.peek(), std::istringstream::traits_type::eof());
  }
  static CString Short(CString response) {
    for (const std::string_view usual : {R"(,"messages":[],"events":[])", R"(,"dialog":{"class":"CSampleSheet",)"
                                                                          R"("caption":7357,"page":"CSamplePage",)"
                                                                          R"("depth":1})"})
      if (const std::size_t at = response.find(usual); at != CString::npos) response.erase(at, usual.size());
    if (response == R"({"ok":true})") return "";
    for (const auto& [usual, instead] : {std::pair{R"({"ok":true,)", ""}, {R"({"ok":false,"error":)", "!"}})
      if (response.starts_with(usual)) return response.replace(0, CString(usual).size(), instead);
    return response;
  }
  CString Path(const CString& file) const { return m_folder.Path() / file; }

  const CTemporaryFolder m_folder;
  CString m_log;
  bool m_ok = false;
  int m_result = 0;
};

TEST_F(AutomationTest, DesignsLiveFromNewToSaveToOpenWithoutADifference) {
  const CString first = Path("first.tspcb"), second = Path("second.tspcb");
  Talk({
      {New("d")},
      {AtPath("save", "d", first)},
      {AtPath("open", "e", first)},
      {AtPath("save", "e", second)},
      {AtPath("save", "d", first)},
      {R"({"op": "history", "design": "e"})", R"("value":{"steps":[],"redo":[],"open":[],"changed":false}})"},
      {R"({"op": "close", "design": "d"})"},
      {R"({"op": "history", "design": "d"})", R"(!"no design is called \"d\""})"},
      {New("d", "CScmSymbolLibrary")},
  });
  EXPECT_FALSE(m_ok);
  EXPECT_NE(FileText(first), "");
  EXPECT_EQ(FileText(first), FileText(second));

  CString value = Play("# no request\n\n" + AtPath("open", "d", first) + "\n" + R"({"op":"design","design":"d"})");
  CString expected = FileText(first);
  std::erase(expected, '\n');
  EXPECT_EQ(value.substr(value.find("\"value\":")), "\"value\":" + expected + "}\n");
  EXPECT_TRUE(m_ok);
}

TEST_F(AutomationTest, AFileThatOthersChangedIsOverwrittenOnRequestAlone) {
  const CString path = Path("p.tsprj"), link = Path("link.tspcb");
  Play(New("p", "CProject") + '\n' + R"({"op": "new", "design": "main", "kind": "CPcbDesign", "project": "p"})" + '\n' +
       AtPath("save", "main", Path("main.tspcb")) + '\n' + AtPath("save", "p", path));
  std::filesystem::create_symlink("main.tspcb", link);
  struct : std::streambuf {
    int_type underflow() override {
      if (next == lines.size()) return traits_type::eof();
      if (next == 1) std::ofstream(changed, std::ios::app) << "\n";  // another program, when the script has opened it
      CString& line = lines[next++];
      setg(line.data(), line.data(), line.data() + line.size());
      return traits_type::to_int_type(line[0]);
    }
    CStringArray lines;
    CString changed;
    std::size_t next = 0;
  } script;
  script.changed = Path("main.tspcb");
  const struct {
    CString request, says;
  } exchanges[] = {
      {AtPath("open", "p", path), R"({"ok":true)"},
      {AtPath("save", "main", link), "has been changed by another program"},
      {R"({"op": "save", "design": "main", "overwrite": 1})", R"(\"overwrite\" has to be true or false)"},
      {R"({"op": "save", "design": "main", "overwrite": true})", R"({"ok":true)"},
      {R"({"op": "save", "design": "main"})", R"({"ok":true)"},
  };
  for (const auto& one : exchanges) script.lines.push_back(one.request + '\n');
  std::istream in(&script);
  std::stringstream out;
  EXPECT_FALSE(CAutomation(in, out).Run());
  for (const auto& one : exchanges) {
    CString response;
    std::getline(out, response);
    EXPECT_NE(response.find(one.says), CString::npos) << response;
  }
}

TEST_F(AutomationTest, ProjectsAreOpenedWithTheirDesignsAlsoAfterTheyMoved) {
  std::filesystem::create_directory(Path("sub"));
  const CString project = Path("p.tsprj"), moved = Path("sub/q.tsprj");
  Talk({
      {New("p", "CProject")},
      {R"({"op": "new", "design": "main", "kind": "CPcbDesign", "project": "p"})"},
      {R"({"op": "new", "design": "lib", "kind": "CPcbSymbolLibrary", "project": "p"})",
       R"(!"a CPcbSymbolLibrary cannot be part of a project"})"},
      {R"({"op": "new", "design": "x", "kind": "CPcbDesign", "project": "main"})",
       R"(!"\"main\" is no open project"})"},
      {AtPath("save", "main", Path("main.tspcb"))},
      {AtPath("save", "p", project)},
      {AtPath("save", "p", moved)},
  });
  EXPECT_NE(FileText(project).find("\"main.tspcb\"]"), CString::npos) << FileText(project);
  for (const CString& path : {project, moved})
    Talk({
        {AtPath("open", "p", path)},
        {R"({"op": "save", "design": "main"})"},
        {AtPath("open", "again", path), R"(!"\"main\" is open already"})"},
        {R"({"op": "close", "design": "again"})", R"(!"no design is called \"again\""})"},
    });
}

TEST_F(AutomationTest, SettingsAndEditionsAreThoseOfTheProgram) {
  Talk({
      {R"({"op": "setting", "key": "Preferences", "name": "MRU"})", R"("value":null})"},
      {R"({"op": "call", "command": "SetMaxMRUCount", "args": [-5]})", R"("returned":null})"},
      {R"({"op": "setting", "key": "Preferences", "name": "MRU"})", R"("value":-5})"},
      {R"({"op": "setting", "key": "Preferences", "name": "MRU", "value": 12})"},
      {R"({"op": "call", "command": "GetMaxMRUCount"})", R"("returned":12})"},
      {R"({"op": "setting", "key": "Settings\\CSV", "name": "Separator", "value": ";"})"},
      {R"({"op": "setting", "key": "Settings\\CSV", "name": "Separator"})", R"("value":";"})"},
      {R"({"op": "setting", "key": "Settings\\CSV", "name": "Separator", "value": null})",
       R"(!"a setting is a text or a whole number"})"},
      {R"({"op": "editions", "names": ["Tarvik", "Corvina"]})"},
      {R"({"op": "editions", "names": ["Pellam", "Nobody"]})", R"(!"one of the names is no edition"})"},
  });
  EXPECT_TRUE(CApplication::IsTarvik() && CApplication::IsCorvina() && !CApplication::IsPellam());
}

TEST_F(AutomationTest, ARefusalSaysWhatIsWrongAndTheScriptGoesOn) {
  CString deep = R"({"op": "answer", "with": )" + CString(70, '[') + CString(70, ']') + "}";
  CString huge = R"({"op": "new", "design": ")" + CString(CRequest::kMaxLength, 'x') + "\"}";
  const SExchange refusals[] = {
      {"nothing", "this is no JSON object"},
      {"[1]", "a request is one JSON object"},
      {"{}{}", "this is no JSON object"},
      {"{\"op\": \"new\", \"design\": \"\xC3\x28\"}", "this is no JSON object"},
      {deep, "this is no JSON object"},
      {huge, "this is no JSON object"},
      {R"({"op": 7})", "a request names its operation"},
      {R"({"op": "dance"})", R"(there is no operation \"dance\")"},
      {R"({"op": "new", "kind": "CPcbDesign"})", R"(new needs \"design\")"},
      {R"({"op": "new", "design": 5, "kind": "CPcbDesign"})", R"(\"design\" has to be a text)"},
      {R"({"op": "new", "design": "d", "design": "e", "kind": "CPcbDesign"})", "twice"},
      {R"({"op": "new", "design": "d", "kind": "CPcbDesign", "colour": 1})", R"(new does not know \"colour\")"},
      {R"({"op": "new", "design": "", "kind": "CPcbDesign"})", "a design needs a name"},
      {R"({"op": "new", "design": "d", "kind": "CTechnology"})", R"(\"CTechnology\" is no kind of design)"},
      {R"({"op": "new", "design": "a", "kind": "CPcbDesign"})", R"(\"a\" is open already)"},
      {R"({"op": "open", "design": "d", "path": "/nowhere/d.tspcb"})", "/nowhere/d.tspcb"},
      {R"({"op": "save", "design": "a"})", "has no file yet"},
      {R"({"op": "save", "design": "a", "path": "/nowhere/d.tspcb"})", "/nowhere"},
      {R"({"op": "undo", "design": "a"})", "there is nothing to undo"},
      {R"({"op": "redo", "design": "a"})", "there is nothing to redo"},
      {R"({"op": "call", "command": "Destroy", "design": "a"})", R"(there is no command \"Destroy\")"},
      {R"({"op": "call", "command": "PropertiesEnabled"})", "needs a \\\"design\\\""},
      {R"({"op": "call", "command": "PropertiesEnabled", "design": "l"})", "that is a design"},
      {R"({"op": "call", "command": "PropertiesEnabled", "design": "a", "args": [1]})", "fewer args"},
      {R"({"op": "call", "command": "SetMaxMRUCount"})", "more args"},
      {R"({"op": "call", "command": "SetMaxMRUCount", "args": [2147483648]})", "does not fit"},
      {R"({"op": "call", "command": "SetMaxMRUCount", "args": [1.0]})", "has to be whole"},
      {R"({"op": "call", "command": "SetAllDisplayed", "design": "a", "args": [1]})", "true or false"},
      {R"({"op": "selection", "design": "a", "items": [{"kind": "CVia", "index": 0}]})", "there is no item CVia 0"},
      {R"({"op": "selection", "design": "a", "items": [{"kind": "CLayer", "index": 0}]})", "there is no item CLayer"},
      {R"({"op": "selection", "design": "a", "items": [{"kind": "CNote"}]})", "an item is given by"},
      {R"({"op": "answer", "with": ["Maybe"]})", R"(\"Maybe\" is no answer)"},
      {R"({"op": "files", "with": [1]})", R"(\"with\" has to be a list of texts)"},
      {R"({"op": "press", "command": "OK"})", "press needs an open dialog"},
  };
  CString script = New("a") + '\n' + New("l", "CPcbSymbolLibrary") + '\n';
  for (const SExchange& refusal : refusals) script += refusal.request + '\n';
  script += R"({"op": "history", "design": "a"})";  // the last line may lack its end
  std::istringstream responses(Play(script));
  CString response;
  std::getline(responses, response);
  std::getline(responses, response);
  for (const SExchange& refusal : refusals) {
    ASSERT_TRUE(std::getline(responses, response));
    EXPECT_TRUE(response.starts_with(R"({"ok":false,"error":")")) << refusal.request.substr(0, 200);
    EXPECT_NE(response.find(refusal.response), CString::npos) << refusal.request.substr(0, 200) << '\n' << response;
  }
  ASSERT_TRUE(std::getline(responses, response));
  EXPECT_NE(response.find(R"("steps":[],"redo":[],"open":[],"changed":false)"), CString::npos) << response;
  EXPECT_FALSE(std::getline(responses, response));
  EXPECT_FALSE(m_ok);
}

TEST_F(AutomationTest, ARefusalInADialogLeavesItAsItWas) {
  const CString refusals[] = {
      R"({"op": "undo", "design": "d"})",
      R"({"op": "close", "design": "d"})",
      R"({"op": "editions", "names": []})",
      R"({"op": "page", "class": "CSampleForm"})",
      R"({"op": "cell", "row": 0, "col": 0, "text": "x"})",
      R"({"op": "cell", "row": 1, "col": 3, "text": "x"})",
      R"({"op": "cell", "row": 4294967297, "col": 0, "text": "x"})",
      R"({"op": "cell", "row": 3, "col": 0, "text": "hidden"})",
      R"({"op": "cell", "row": 2, "col": 0, "text": "disabled"})",
      R"({"op": "cell", "row": 1, "col": 2, "text": "no editor"})",
      R"({"op": "cell", "row": 1, "col": 1, "text": "not offered"})",
      R"({"op": "cell", "row": 1, "col": 1, "value": 9})",
      R"({"op": "cell", "row": 1, "col": 0})",
      R"({"op": "cell", "row": 1, "col": 0, "text": "x", "value": "x"})",
      R"({"op": "cell", "row": 1, "col": 0, "text": "x", "grid": "other"})",
      R"({"op": "items", "row": 9, "col": 0})",
      R"({"op": "field", "name": "Nothing", "text": "x"})",
      R"({"op": "focus", "row": 3, "col": 0})",
      R"({"op": "select", "rows": [1, 3]})",
      R"({"op": "select", "rows": [1], "list": "target"})",
      R"({"op": "select", "list": "target", "indexes": [0, 2]})",
      R"({"op": "sort", "col": 1})",
      R"({"op": "press", "command": "Sort"})",
      R"({"op": "press", "command": "Swap"})",
      R"({"op": "press", "command": "Apply"})",
      R"({"op": "press", "command": "Nothing"})",
  };
  CString script = New("d") + '\n' + R"({"op": "state"})" + '\n';
  for (const CString& refusal : refusals) script += refusal + '\n';
  script += R"({"op": "state"})";
  CSampleSheet sheet(m_log);
  std::istringstream responses(Play(script, &sheet));
  CString before, response;
  std::getline(responses, before);
  std::getline(responses, before);
  for (const CString& refusal : refusals) {
    ASSERT_TRUE(std::getline(responses, response));
    EXPECT_TRUE(response.starts_with(R"({"ok":false,"error":")")) << refusal << '\n' << response;
  }
  ASSERT_TRUE(std::getline(responses, response));
  EXPECT_EQ(response, before);
}

TEST_F(AutomationTest, EveryRequestInADialogDoesWhatAPersonDoes) {
  CSampleSheet sheet(m_log);
  const CString state =
      R"("value":{"class":"CSampleSheet","title":"Technology","caption":7357,)"
      R"("pages":[{"class":"CSamplePage","title":"Units"}],"page":"CSamplePage","fields":[],)"
      R"("commands":[{"name":"OK","enabled":true,"visible":true},{"name":"Cancel","enabled":true,"visible":true},)"
      R"({"name":"Apply","enabled":true,"visible":true},{"name":"Edit","enabled":true,"visible":true},)"
      R"({"name":"Merge","enabled":true,"visible":true},{"name":"Directory","enabled":true,"visible":true},)"
      R"({"name":"ContextMenu","enabled":true,"visible":true},{"name":"Export","enabled":true,"visible":true},)"
      R"({"name":"Sort","enabled":false,"visible":true},{"name":"Swap","enabled":true,"visible":false}],)"
      R"("grids":{"grid":{"headers":[{"id":7205,"text":"Name"},{"id":0,"text":""},{"id":0,"text":""}],"rows":[)"
      R"({"row":1,"shown":true,"modified":true,"record":null,"cells":[)"
      R"({"text":"Signal","value":"Signal","enabled":true,"modified":true,"editor":"text","colour":null},)"
      R"({"text":"","value":0,"enabled":true,"modified":true,"editor":"combo","colour":null},)"
      R"({"text":"","value":"","enabled":true,"modified":true,"editor":null,"colour":null}]},)"
      R"({"row":2,"shown":true,"modified":true,"record":null,"cells":[)"
      R"({"text":"Row 2","value":"Row 2","enabled":false,"modified":true,"editor":"text","colour":null},)"
      R"({"text":"Eight","value":8,"enabled":true,"modified":true,"editor":"combo","colour":null},)"
      R"({"text":"","value":"","enabled":true,"modified":true,"editor":null,"colour":null}]},)"
      R"({"row":3,"shown":false,"modified":false,"record":null,"cells":[)"
      R"({"text":"Row 3","value":"Row 3","enabled":true,"modified":true,"editor":"text","colour":null},)"
      R"({"text":"","value":0,"enabled":true,"modified":true,"editor":"combo","colour":null},)"
      R"({"text":"","value":"","enabled":true,"modified":true,"editor":null,"colour":null}]}],)"
      R"("focus":[2,1],"selected":[1,2]}},)"
      R"("lists":{"target":{"entries":[{"text":"One","selected":false},{"text":"Two","selected":true}],)"
      R"("description":"chosen"}},"focus":null,"help":null}})";
  Talk(
      {
          {R"({"op": "page", "class": "CSamplePage"})"},
          {R"({"op": "cell", "row": 1, "col": 0, "text": "Signal"})"},
          {R"({"op": "cell", "row": 2, "col": 1, "value": 8, "grid": "grid"})"},
          {R"({"op": "items", "row": 1, "col": 1})",
           R"("value":[{"value":7,"text":"Seven"},{"value":8,"text":"Eight"}]})"},
          {R"({"op": "focus", "row": 2, "col": 1})"},
          {R"({"op": "select", "rows": [2, 1]})"},
          {R"({"op": "select", "list": "target", "indexes": [1]})"},
          {R"({"op": "sort", "col": 0})"},
          {R"({"op": "state"})", state},
          {Press("Apply"), R"("applied":true})"},
          {Press("Close")},
      },
      &sheet);
  EXPECT_EQ(m_result, CDialog::kCancel);
}

TEST_F(AutomationTest, ARefusedSheetStaysOpenUntilItsPagesAgree) {
  CSampleSheet sheet(m_log);
  sheet.page.refusals = 1;
  Talk({{Press("OK"), R"("applied":false})"}, {Press("OK"), R"("applied":true})"}}, &sheet);
  EXPECT_EQ(m_result, CDialog::kOk);
  EXPECT_FALSE(sheet.IsRefused());
}

TEST_F(AutomationTest, MessagesAndEventsAreToldInOneRunningCount) {
  const auto asked = [](int number, const CString& answer) {
    return R"("messages":[{"n":)" + IntText(number) + R"(,"id":7260,"args":["a"],"text":")" +
           TextOf(Text::PouredLayerBecomesPlane) + R"(","buttons":["Yes","No"],"answer":")" + answer +
           R"("}],"events":[]})";
  };
  CSampleSheet sheet(m_log);
  Talk(
      {
          {Press("Export"),
           R"("messages":[{"n":1,"beep":-1},{"n":3,"opened":"tracks.csv"},)"
           R"({"n":4,"report":7357,"lines":["a line"],)"
           R"("problems":[{"id":0,"args":[],"text":"a line"}]}],"events":[{"n":2,"name":"First","arg1":3,"arg2":4}],)"
           R"("redraw":[[1,2,3,4],null]})"},
          {R"({"op": "answer", "with": ["No", "Yes", "OK"]})"},
          {Press("Merge"), asked(5, "No")},
          {Press("Merge"), asked(6, "Yes")},
          {Press("Merge"), CString(R"(!"the question does not offer OK: )") + TextOf(Text::PouredLayerBecomesPlane) +
                               "\"," + asked(7, "No")},
          {Press("OK"), R"("applied":true})"},
      },
      &sheet);
  EXPECT_EQ(m_result, CDialog::kOk);
}

TEST_F(AutomationTest, ChoosersAndMenusTakeWhatIsQueuedAndNothingOtherwise) {
  const auto message = [](int number, const CString& rest) {
    return R"("messages":[{"n":)" + IntText(number) + ',' + rest + R"(}],"events":[]})";
  };
  const CString chosen = R"("chooser":{"kind":"save","proposed":"tracks"},"chosen":)";
  const CString entry = R"("menu":["Copy","Delete"],"chosen":)";
  CSampleSheet sheet(m_log);
  Talk(
      {
          {R"({"op": "files", "with": ["", "/tmp.d/a"]})"},
          {R"({"op": "files", "with": ["b.txt"]})"},
          {Press("Directory"), message(1, chosen + "null")},
          {Press("Directory"), message(2, chosen + R"("/tmp.d/a.csv")")},
          {Press("Directory"), message(3, chosen + R"("b.txt")")},
          {Press("Directory"), message(4, chosen + "null")},
          {R"({"op": "menu", "with": ["Delete", "Paste"]})"},
          {Press("ContextMenu"), message(5, entry + R"("Delete")")},
          {Press("ContextMenu"), R"(!"the menu has no entry \"Paste\"",)" + message(6, entry + "null")},
          {R"({"op": "menu", "with": ["Copy"]})"},
          {R"({"op": "menu", "with": []})"},
          {Press("ContextMenu"), message(7, entry + "null")},
      },
      &sheet);
}

TEST_F(AutomationTest, RequestsReachTheTopDialogAndTheEndOfInputCancelsInsideOut) {
  CSampleSheet sheet(m_log);
  const auto top = [](int depth) {
    return R"("dialog":{"class":"CSampleForm","caption":7030,"depth":)" + IntText(depth) + "}";
  };
  Talk(
      {
          {Press("Edit"), top(2) + "}"},
          {R"({"op": "field", "name": "Name", "text": "outer"})", top(2) + "}"},
          {Press("Edit"), top(3) + "}"},
          {R"({"op": "field", "name": "Name", "value": "inner"})", top(3) + "}"},
          {R"({"op": "field", "name": "Fixed", "text": "x"})",
           R"(!"The field \"Fixed\" cannot be edited now.",)" + top(3) + "}"},
          {R"({"op": "field", "name": "Style", "value": null})", top(3) + "}"},
          {R"({"op": "field", "name": "Plated", "value": true})", top(3) + "}"},
          {R"({"op": "call", "command": "GetMaxMRUCount"})", top(3) + R"(,"returned":10})"},
          {Press("OK"), top(2) + R"(,"applied":true})"},
          {Press("Edit"), top(3) + "}"},
      },
      &sheet);
  EXPECT_EQ(m_log, "OK inner;Cancel ;Cancel outer;");
  EXPECT_FALSE(sheet.IsOpen());
}

TEST_F(AutomationTest, DialogsInDialogsEndSomewhere) {
  CSampleSheet sheet(m_log);
  CString script;
  for (int i = 0; i < 70; ++i)
    script += R"({"op": "press", "command": "Edit"})"
              "\n";
  const CString out = Play(script, &sheet);
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 70);
  EXPECT_NE(out.find("\"depth\":64"), CString::npos);
  EXPECT_EQ(out.find("\"depth\":65"), CString::npos);
  EXPECT_FALSE(m_ok);
}

TEST_F(AutomationTest, ItemsAreSelectedByTheirPlaceAmongThoseOfTheDesignItselfOrByName) {
  const CString path = Path("d.tspcb");
  Play(New("d") + '\n' + AtPath("save", "d", path));
  CString text = FileText(path);
  text.insert(text.rfind('}'),
              R"(,"symbols":[{"name":"S","texts":[{"name":"inside","layer":"Top","style":"Default"}]}],)"
              R"("texts":[{"name":"first","layer":"Top","style":"Default"},{"name":"second","layer":"Top",)"
              R"("style":"Default"}],"areas":[{"name":"second","layer":"Top"}])");
  std::ofstream(path) << text;
  const CString enabled = R"({"op": "call", "command": "PropertiesEnabled", "design": "d"})";
  const auto select = [](const CString& items) {
    return R"({"op": "selection", "design": "d", "items": [)" + items + "]}";
  };
  Talk({
      {AtPath("open", "d", path)},
      {select(R"({"kind": "CArea", "name": "second"})")},
      {enabled, R"("returned":false})"},
      {select(R"({"kind": "CFreeText", "index": 1}, {"kind": "CFreeText", "name": "first"})")},
      {enabled, R"("returned":true})"},
      {select(R"({"kind": "CArea", "index": 0}, {"kind": "CFreeText", "index": 2})"),
       R"(!"there is no item CFreeText 2"})"},
      {enabled, R"("returned":true})"},  // nothing was changed
      {select(R"({"kind": "CFreeText", "name": "inside"})"), R"(!"there is no item CFreeText \"inside\""})"},
  });
}

TEST_F(AutomationTest, AFormShowsItsFieldsWithTheirValuesAndChoices) {
  CSampleForm form(m_log);
  const CString out = Play(R"({"op": "state"})", &form);
  EXPECT_NE(out.find(R"("pages":[],"fields":[)"
                     R"({"name":"Name","kind":"text","text":"","value":"","enabled":true,"visible":true},)"
                     R"({"name":"Fixed","kind":"text","text":"","value":"","enabled":false,"visible":true},)"
                     R"({"name":"Style","kind":"combo","text":"Power","value":"Power","enabled":true,"visible":true,)"
                     R"("items":[{"value":null,"text":""},{"value":"Signal","text":"Signal"},)"
                     R"({"value":"Power","text":"Power"}]},)"
                     R"({"name":"Plated","kind":"check","text":"","value":false,"enabled":true,"visible":true}],)"),
            CString::npos)
      << out;
}

TEST_F(AutomationTest, WhenNobodyReadsTheResponsesTheScriptEnds) {
  struct : std::streambuf {
  } closed;  // takes nothing
  std::istringstream in(R"({"op": "setting", "key": "K", "name": "N", "value": 1}
                           {"op": "setting", "key": "K", "name": "N", "value": 2})");
  std::ostream nowhere(&closed);
  CAutomation automation(in, nowhere);
  EXPECT_FALSE(automation.Run());
  int value = 0;
  EXPECT_TRUE(CAppRegistry("K").GetValue("N", value));
  EXPECT_EQ(value, 1);
}

TEST_F(AutomationTest, ACallEndsWithTheResponseToWhatClosesItsDialogAndIsOneStep) {
  const CString sheet = R"("dialog":{"class":"CSizesDialog","caption":7357,"page":"CLayersPage","depth":)";
  Talk({
      {New("d")},
      {New("e")},
      {R"({"op": "call", "command": "ChangeLayers", "design": "d"})", sheet + "1}}"},
      {Press("Add"), sheet + "1}}"},
      {R"({"op": "cell", "row": 4, "col": 1, "text": "Glue"})", sheet + "1}}"},
      {R"({"op": "call", "command": "ChangeLayerTypes", "design": "e"})", sheet + "2}}"},
      {Press("Close"),
       R"("messages":[],"events":[{"n":1,"name":"TechnologyChanged","arg1":"e","arg2":0}],)"
       R"("dialog":{"class":"CSizesDialog","caption":7357,"page":"CLayersPage","depth":1},"returned":null})"},
      {R"({"op": "history", "design": "d"})",
       sheet + R"(1},"value":{"steps":[],"redo":[],"open":[7357],"changed":false}})"},
      {Press("OK"), R"("messages":[],"events":[{"n":2,"name":"LayerAdded","arg1":"Glue","arg2":0},)"
                    R"({"n":3,"name":"DesignColoursChanged","arg1":0,"arg2":0},)"
                    R"({"n":4,"name":"TechnologyChanged","arg1":"d","arg2":0}],"applied":true,"returned":null})"},
      {R"({"op": "undo", "design": "d"})"},
      {R"({"op": "history", "design": "d"})",
       R"("value":{"steps":[],"redo":[{"id":7357,"text":"Technology"}],"open":[],"changed":false}})"},
      {R"({"op": "redo", "design": "d"})"},
  });
}

#ifdef TECHSHEET_CLI
TEST_F(AutomationTest, TheProgramEndsWithTheStatusOfItsResponses) {
  const CString script = Path("script.txt");
  const auto status = [&](const CString& lines, const CString& options) {
    std::ofstream(script) << lines;
    const CString command = CString(TECHSHEET_CLI) + " automate --settings " + Path("settings") + " > " + Path("out") +
                            " 2> " + Path("errors") + " < " + script + ' ' + options;
    return WEXITSTATUS(std::system(command.c_str()));
  };
  const CString write = R"({"op": "setting", "key": "K", "name": "N", "value": 7})";
  EXPECT_EQ(status(write, ""), 0);
  EXPECT_EQ(status(R"({"op": "setting", "key": "K", "name": "N"})", "--edition Tarvik,Corvina --script " + script), 0);
  EXPECT_EQ(FileText(Path("out")), "{\"ok\":true,\"messages\":[],\"events\":[],\"value\":7}\n");
  const CString open = New("d") + "\n{\"op\": \"call\", \"command\": \"ChangeLayers\", \"design\": \"d\"}\n";
  const CString refused = open + Press("Add") + '\n' + Press("OK") + '\n' + Press("Cancel") + '\n';
  const CString mended = open.substr(open.find('\n') + 1) + Press("OK") + '\n';
  const CString noFile = R"({"op": "files", "with": ["/nowhere/layers.csv"]})" + CString("\n");
  const struct {
    CString lines, options;
    int status;
    CString says;
  } cases[] = {
      {"nonsense\n" + open, "", 1, ""},
      {write, "--edition Nobody", 2, "Pellam"},
      {write, "--edition Pellam,,Corvina", 2, "\"\" is no edition"},
      {write, "--script " + Path("missing"), 2, "missing"},
      {write, "--script " + m_folder.Path().string(), 2, "Is a directory"},
      {write, "--unknown", 2, ""},
      {write, "> /dev/full", 2, "No space left"},
      {open, "", 6, "the dialog \"Technology\" was open"},
      {refused, "", 6, "The last OK or Apply was refused"},
      {refused + mended, "", 0, ""},
      {open + noFile + Press("Export") + '\n' + Press("OK"), "", 1, ""},
      {open + noFile + Press("Import") + '\n' + Press("OK"), "", 1, ""},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(status(one.lines, one.options), one.status) << one.lines << one.options;
    EXPECT_NE(FileText(Path("errors")).find(one.says), CString::npos) << one.lines << FileText(Path("errors"));
  }
}
#endif

TEST(JsonWriterTest, TextThatIsNoUtf8IsMendedByteByByte) {
  CJsonWriter json;
  EXPECT_EQ(json.Texts({"\xFF"
                        "a\xC3\xA9\xE2\x82",
                        "\xF0\x9F\x98\x80\"\n", ""})
                .Json(),
            "[\"\xEF\xBF\xBD"
            "a\xC3\xA9\xEF\xBF\xBD\xEF\xBF\xBD\",\"\xF0\x9F\x98\x80\\\"\\n\",\"\"]");
}

}  // namespace
