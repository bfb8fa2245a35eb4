#include "automation/automation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "automation/sampledialog.h"
#include "model/services/registry.h"
#include "support/files.h"

namespace {

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
  /// The same without what most responses have in common.
  CString PlayShort(const CString& script, CDialog* dialog = nullptr) {
    CString out = Play(script, dialog);
    for (const std::string_view usual : {R"("messages":[],"events":[])", R"(,"dialog":{"class":"CSampleSheet",)"
                                                                         R"("caption":7357,"page":"CSamplePage",)"
                                                                         R"("depth":1})"})
      for (std::size_t at = 0; (at = out.find(usual)) != CString::npos;) out.erase(at, usual.size());
    return out;
  }
  CString Path(const CString& file) const { return m_folder.Path() / file; }
  static CString FileText(const CString& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  const CTemporaryFolder m_folder;
  CString m_log;
  bool m_ok = false;
  int m_result = 0;
};

CString Lines(std::initializer_list<CString> lines) {
  CString out;
  for (const CString& line : lines) (out += line) += '\n';
  return out;
}

TEST_F(AutomationTest, DesignsLiveFromNewToSaveToOpenWithoutADifference) {
  const CString first = Path("first.tspcb"), second = Path("second.tspcb");
  const CString script = Lines({
      "# comments and blank lines are no requests",
      "",
      R"({"op": "new", "design": "d", "kind": "CPcbDesign"})",
      R"({"op": "save", "design": "d", "path": ")" + first + "\"}",
      R"({"op": "open", "design": "e", "path": ")" + first + "\"}",
      R"({"op": "save", "design": "e", "path": ")" + second + "\"}",
      R"({"op": "history", "design": "e"})",
      R"({"op": "close", "design": "d"})",
      R"({"op": "history", "design": "d"})",
      R"({"op": "new", "design": "d", "kind": "CScmSymbolLibrary"})",
  });
  EXPECT_EQ(PlayShort(script), Lines({
                                   R"({"ok":true,})",
                                   R"({"ok":true,})",
                                   R"({"ok":true,})",
                                   R"({"ok":true,})",
                                   R"({"ok":true,,"value":{"steps":[],"redo":[],"open":[],"changed":false}})",
                                   R"({"ok":true,})",
                                   R"({"ok":false,"error":"no design is called \"d\"",})",
                                   R"({"ok":true,})",
                               }));
  EXPECT_FALSE(m_ok);
  EXPECT_NE(FileText(first), "");
  EXPECT_EQ(FileText(first), FileText(second));

  CString value = Play(R"({"op":"open","design":"d","path":")" + first + "\"}\n" + R"({"op":"design","design":"d"})");
  CString expected = FileText(first);
  std::erase(expected, '\n');
  EXPECT_EQ(value.substr(value.find("\"value\":")), "\"value\":" + expected + "}\n");
  EXPECT_TRUE(m_ok);
}

TEST_F(AutomationTest, ProjectsAreOpenedWithTheirDesignsAlsoAfterTheyMoved) {
  std::filesystem::create_directory(Path("sub"));
  const CString project = Path("p.tsprj"), moved = Path("sub/q.tsprj");
  EXPECT_EQ(PlayShort(Lines({
                R"({"op": "new", "design": "p", "kind": "CProject"})",
                R"({"op": "new", "design": "main", "kind": "CPcbDesign", "project": "p"})",
                R"({"op": "new", "design": "lib", "kind": "CPcbSymbolLibrary", "project": "p"})",
                R"({"op": "new", "design": "x", "kind": "CPcbDesign", "project": "main"})",
                R"({"op": "save", "design": "main", "path": ")" + Path("main.tspcb") + "\"}",
                R"({"op": "save", "design": "p", "path": ")" + project + "\"}",
                R"({"op": "save", "design": "p", "path": ")" + moved + "\"}",
            })),
            Lines({
                R"({"ok":true,})",
                R"({"ok":true,})",
                R"({"ok":false,"error":"a CPcbSymbolLibrary cannot be part of a project",})",
                R"({"ok":false,"error":"\"main\" is no open project",})",
                R"({"ok":true,})",
                R"({"ok":true,})",
                R"({"ok":true,})",
            }));
  EXPECT_NE(FileText(project).find("\"main.tspcb\"]"), CString::npos) << FileText(project);
  for (const CString& path : {project, moved})
    EXPECT_EQ(PlayShort(Lines({
                  R"({"op": "open", "design": "p", "path": ")" + path + "\"}",
                  R"({"op": "save", "design": "main"})",
                  R"({"op": "open", "design": "again", "path": ")" + path + "\"}",  // its designs are open already
                  R"({"op": "close", "design": "again"})",
              })),
              Lines({
                  R"({"ok":true,})",
                  R"({"ok":true,})",
                  R"({"ok":false,"error":"\"main\" is open already",})",
                  R"({"ok":false,"error":"no design is called \"again\"",})",
              }));
}

TEST_F(AutomationTest, SettingsEditionsAndFontsAreThoseOfTheProgram) {
  EXPECT_EQ(PlayShort(Lines({
                R"({"op": "setting", "key": "Preferences", "name": "MRU"})",
                R"({"op": "call", "command": "GetMaxMRUCount"})",
                R"({"op": "call", "command": "SetMaxMRUCount", "args": [-5]})",
                R"({"op": "setting", "key": "Preferences", "name": "MRU"})",
                R"({"op": "setting", "key": "Preferences", "name": "MRU", "value": 12})",
                R"({"op": "call", "command": "GetMaxMRUCount"})",
                R"({"op": "setting", "key": "Settings\\CSV", "name": "Separator", "value": ";"})",
                R"({"op": "setting", "key": "Settings\\CSV", "name": "Separator"})",
                R"({"op": "setting", "key": "Settings\\CSV", "name": "Separator", "value": null})",
                R"({"op": "editions", "names": ["Tarvik", "Corvina"]})",
                R"({"op": "editions", "names": ["Pellam", "Nobody"]})",
            })),
            Lines({
                R"({"ok":true,,"value":null})",
                R"({"ok":true,,"returned":10})",
                R"({"ok":true,,"returned":null})",
                R"({"ok":true,,"value":-5})",
                R"({"ok":true,})",
                R"({"ok":true,,"returned":12})",
                R"({"ok":true,})",
                R"({"ok":true,,"value":";"})",
                R"({"ok":false,"error":"a setting is a text or a whole number",})",
                R"({"ok":true,})",
                R"({"ok":false,"error":"one of the names is no edition",})",
            }));
  EXPECT_TRUE(CApplication::IsTarvik() && CApplication::IsCorvina() && !CApplication::IsPellam());
}

struct SRefusal {
  CString line, error;
};
class AutomationRefusals : public AutomationTest {};

TEST_F(AutomationRefusals, OutsideDialogsEachSaysWhatIsWrongAndTheScriptGoesOn) {
  CString deep = R"({"op": "answer", "with": )" + CString(70, '[') + CString(70, ']') + "}";
  CString huge = R"({"op": "new", "design": ")" + CString(CRequest::kMaxLength, 'x') + "\"}";
  const SRefusal refusals[] = {
      {"nothing", "this is no JSON object"},
      {"[1]", "a request is one JSON object"},
      {"{}{}", "this is no JSON object"},
      {R"({"op": "new",)", "this is no JSON object"},
      {CString("\x01\xFF\x00", 3), "this is no JSON object"},
      {"{\"op\": \"new\", \"design\": \"\xC3\x28\"}", "this is no JSON object"},
      {R"({"op": "new", "design": "\ud800"})", "this is no JSON object"},
      {deep, "this is no JSON object"},
      {huge, "this is no JSON object"},
      {R"({"design": "d"})", "a request names its operation"},
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
      {R"({"op": "call", "command": "SetMaxMRUCount", "args": ["1"]})", "a whole number"},
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
  CString script = R"({"op": "new", "design": "a", "kind": "CPcbDesign"})"
                   "\n"
                   R"({"op": "new", "design": "l", "kind": "CPcbSymbolLibrary"})"
                   "\n";
  for (const SRefusal& refusal : refusals) script += refusal.line + '\n';
  script += R"({"op": "history", "design": "a"})";  // the last line may lack its end
  std::istringstream responses(Play(script));
  CString response;
  std::getline(responses, response);
  std::getline(responses, response);
  for (const SRefusal& refusal : refusals) {
    ASSERT_TRUE(std::getline(responses, response));
    EXPECT_TRUE(response.starts_with(R"({"ok":false,"error":")")) << refusal.line.substr(0, 200);
    EXPECT_NE(response.find(refusal.error), CString::npos) << refusal.line.substr(0, 200) << '\n' << response;
  }
  ASSERT_TRUE(std::getline(responses, response));
  EXPECT_NE(response.find(R"("steps":[],"redo":[],"open":[],"changed":false)"), CString::npos) << response;
  EXPECT_FALSE(std::getline(responses, response));
  EXPECT_FALSE(m_ok);
}

TEST_F(AutomationRefusals, InDialogsEachLeavesTheDialogAsItWas) {
  const CString refusals[] = {
      R"({"op": "undo", "design": "d"})",
      R"({"op": "redo", "design": "d"})",
      R"({"op": "close", "design": "d"})",
      R"({"op": "editions", "names": []})",
      R"({"op": "page", "class": "CSampleForm"})",
      R"({"op": "cell", "row": 0, "col": 0, "text": "x"})",
      R"({"op": "cell", "row": 4, "col": 0, "text": "x"})",
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
      R"({"op": "select", "list": "file", "indexes": []})",
      R"({"op": "sort", "col": 1})",
      R"({"op": "sort", "col": 3})",
      R"({"op": "press", "command": "Sort"})",
      R"({"op": "press", "command": "Swap"})",
      R"({"op": "press", "command": "Apply"})",
      R"({"op": "press", "command": "Nothing"})",
  };
  CString script = R"({"op": "new", "design": "d", "kind": "CPcbDesign"})"
                   "\n"
                   R"({"op": "state"})"
                   "\n";
  for (const CString& refusal : refusals) script += refusal + '\n';
  script += R"({"op": "state"})";
  CSampleSheet sheet(m_log);
  std::istringstream responses(PlayShort(script, &sheet));
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
  EXPECT_EQ(
      PlayShort(Lines({
                    R"({"op": "page", "class": "CSamplePage"})",
                    R"({"op": "cell", "row": 1, "col": 0, "text": "Signal"})",
                    R"({"op": "cell", "row": 2, "col": 1, "value": 8, "grid": "grid"})",
                    R"({"op": "items", "row": 1, "col": 1})",
                    R"({"op": "focus", "row": 2, "col": 1})",
                    R"({"op": "select", "rows": [2, 1]})",
                    R"({"op": "select", "list": "target", "indexes": [1]})",
                    R"({"op": "sort", "col": 0})",
                    R"({"op": "state"})",
                    R"({"op": "press", "command": "Apply"})",
                    R"({"op": "press", "command": "Close"})",
                }),
                &sheet),
      Lines({
          R"({"ok":true,})",
          R"({"ok":true,})",
          R"({"ok":true,})",
          R"({"ok":true,,"value":[{"value":7,"text":"Seven"},{"value":8,"text":"Eight"}]})",
          R"({"ok":true,})",
          R"({"ok":true,})",
          R"({"ok":true,})",
          R"({"ok":true,})",
          R"({"ok":true,,"value":{"class":"CSampleSheet","title":"Technology","caption":7357,)"
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
          R"("description":"chosen"}},"focus":null,"help":null}})",
          R"({"ok":true,})",
          R"({"ok":true,})",
      }));
  EXPECT_EQ(m_result, CDialog::kCancel);
}

TEST_F(AutomationTest, MessagesAndEventsAreToldInOneRunningCount) {
  CSampleSheet sheet(m_log);
  EXPECT_EQ(PlayShort(Lines({
                          R"({"op": "press", "command": "Export"})",
                          R"({"op": "answer", "with": ["No", "Yes", "OK"]})",
                          R"({"op": "press", "command": "Merge"})",
                          R"({"op": "press", "command": "Merge"})",
                          R"({"op": "press", "command": "Merge"})",
                          R"({"op": "press", "command": "OK"})",
                      }),
                      &sheet),
            Lines({
                R"({"ok":true,"messages":[{"n":1,"beep":-1},{"n":3,"opened":"tracks.csv"},)"
                R"({"n":4,"report":7357,"lines":["a line"]}],"events":[{"n":2,"name":"First","arg1":3,"arg2":4}],)"
                R"("redraw":[[1,2,3,4],null]})",
                R"({"ok":true,})",
                R"({"ok":true,"messages":[{"n":5,"id":7260,"args":["a"],"text":")" +
                    TextOf(Text::PouredLayerBecomesPlane) + R"(","buttons":["Yes","No"],"answer":"No"}],"events":[]})",
                R"({"ok":true,"messages":[{"n":6,"id":7260,"args":["a"],"text":")" +
                    TextOf(Text::PouredLayerBecomesPlane) + R"(","buttons":["Yes","No"],"answer":"Yes"}],"events":[]})",
                R"({"ok":false,"error":"the question does not offer OK: )" + TextOf(Text::PouredLayerBecomesPlane) +
                    R"(","messages":[{"n":7,"id":7260,"args":["a"],"text":")" + TextOf(Text::PouredLayerBecomesPlane) +
                    R"(","buttons":["Yes","No"],"answer":"No"}],"events":[]})",
                R"({"ok":true,})",
            }));
  EXPECT_EQ(m_result, CDialog::kOk);
}

TEST_F(AutomationTest, ChoosersAndMenusTakeWhatIsQueuedAndNothingOtherwise) {
  const CString cancelled = R"("chooser":{"kind":"save","proposed":"tracks"},"chosen":null}],"events":[]})";
  const CString chosen = R"("chooser":{"kind":"save","proposed":"tracks"},"chosen":)";
  CSampleSheet sheet(m_log);
  EXPECT_EQ(PlayShort(Lines({
                          R"({"op": "files", "with": ["", "/tmp.d/a"]})",
                          R"({"op": "files", "with": ["b.txt"]})",
                          R"({"op": "press", "command": "Directory"})",
                          R"({"op": "press", "command": "Directory"})",
                          R"({"op": "press", "command": "Directory"})",
                          R"({"op": "press", "command": "Directory"})",
                          R"({"op": "menu", "with": ["Delete", "Paste"]})",
                          R"({"op": "press", "command": "ContextMenu"})",
                          R"({"op": "press", "command": "ContextMenu"})",
                          R"({"op": "menu", "with": ["Copy"]})",
                          R"({"op": "menu", "with": []})",
                          R"({"op": "press", "command": "ContextMenu"})",
                      }),
                      &sheet),
            Lines({
                R"({"ok":true,})",
                R"({"ok":true,})",
                R"({"ok":true,"messages":[{"n":1,)" + cancelled,
                R"({"ok":true,"messages":[{"n":2,)" + chosen + R"("/tmp.d/a.csv"}],"events":[]})",
                R"({"ok":true,"messages":[{"n":3,)" + chosen + R"("b.txt"}],"events":[]})",
                R"({"ok":true,"messages":[{"n":4,)" + cancelled,
                R"({"ok":true,})",
                R"({"ok":true,"messages":[{"n":5,"menu":["Copy","Delete"],"chosen":"Delete"}],"events":[]})",
                R"({"ok":false,"error":"the menu has no entry \"Paste\"",)"
                R"("messages":[{"n":6,"menu":["Copy","Delete"],"chosen":null}],"events":[]})",
                R"({"ok":true,})",
                R"({"ok":true,})",
                R"({"ok":true,"messages":[{"n":7,"menu":["Copy","Delete"],"chosen":null}],"events":[]})",
            }));
}

TEST_F(AutomationTest, RequestsReachTheTopDialogAndTheEndOfInputCancelsInsideOut) {
  CSampleSheet sheet(m_log);
  const CString top = R"(,"dialog":{"class":"CSampleForm","caption":7030,"depth":)";
  EXPECT_EQ(PlayShort(Lines({
                          R"({"op": "press", "command": "Edit"})",
                          R"({"op": "field", "name": "Name", "text": "outer"})",
                          R"({"op": "press", "command": "Edit"})",
                          R"({"op": "field", "name": "Name", "value": "inner"})",
                          R"({"op": "field", "name": "Fixed", "text": "x"})",
                          R"({"op": "field", "name": "Style", "value": null})",
                          R"({"op": "field", "name": "Plated", "value": true})",
                          R"({"op": "call", "command": "GetMaxMRUCount"})",
                          R"({"op": "press", "command": "OK"})",
                          R"({"op": "press", "command": "Edit"})",
                      }),
                      &sheet),
            Lines({
                R"({"ok":true,)" + top + "2}}",
                R"({"ok":true,)" + top + "2}}",
                R"({"ok":true,)" + top + "3}}",
                R"({"ok":true,)" + top + "3}}",
                R"({"ok":false,"error":"The field \"Fixed\" cannot be edited now.",)" + top + "3}}",
                R"({"ok":true,)" + top + "3}}",
                R"({"ok":true,)" + top + "3}}",
                R"({"ok":true,)" + top + R"(3},"returned":10})",
                R"({"ok":true,)" + top + "2}}",
                R"({"ok":true,)" + top + "3}}",
            }));
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
  Play(Lines({R"({"op": "new", "design": "d", "kind": "CPcbDesign"})",
              R"({"op": "save", "design": "d", "path": ")" + path + "\"}"}));
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
  EXPECT_EQ(PlayShort(Lines({
                R"({"op": "open", "design": "d", "path": ")" + path + "\"}",
                select(R"({"kind": "CArea", "name": "second"})"),
                enabled,
                select(R"({"kind": "CFreeText", "index": 1}, {"kind": "CFreeText", "name": "first"})"),
                enabled,
                select(R"({"kind": "CArea", "index": 0}, {"kind": "CFreeText", "index": 2})"),  // changes nothing
                enabled,
                select(R"({"kind": "CFreeText", "name": "inside"})"),
                select(""),
                enabled,
            })),
            Lines({
                R"({"ok":true,})",
                R"({"ok":true,})",
                R"({"ok":true,,"returned":false})",
                R"({"ok":true,})",
                R"({"ok":true,,"returned":true})",
                R"({"ok":false,"error":"there is no item CFreeText 2",})",
                R"({"ok":true,,"returned":true})",
                R"({"ok":false,"error":"there is no item CFreeText \"inside\"",})",
                R"({"ok":true,})",
                R"({"ok":true,,"returned":true})",
            }));
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
  std::istringstream in(Lines({R"({"op": "setting", "key": "K", "name": "N", "value": 1})",
                               R"({"op": "setting", "key": "K", "name": "N", "value": 2})"}));
  std::ostream nowhere(&closed);
  CAutomation automation(in, nowhere);
  EXPECT_FALSE(automation.Run());
  int value = 0;
  EXPECT_TRUE(CAppRegistry("K").GetValue("N", value));
  EXPECT_EQ(value, 1);
}

TEST_F(AutomationTest, ACallEndsWithTheResponseToWhatClosesItsDialogAndIsOneStep) {
  const CString sheet = R"(,"dialog":{"class":"CSizesDialog","caption":7357,"page":"CLayersPage","depth":)";
  EXPECT_EQ(
      PlayShort(Lines({
          R"({"op": "new", "design": "d", "kind": "CPcbDesign"})",
          R"({"op": "new", "design": "e", "kind": "CPcbDesign"})",
          R"({"op": "call", "command": "ChangeLayers", "design": "d"})",
          R"({"op": "press", "command": "Add"})",
          R"({"op": "cell", "row": 4, "col": 1, "text": "Glue"})",
          R"({"op": "call", "command": "ChangeLayerTypes", "design": "e"})",
          R"({"op": "press", "command": "Close"})",
          R"({"op": "history", "design": "d"})",
          R"({"op": "press", "command": "OK"})",
          R"({"op": "undo", "design": "d"})",
          R"({"op": "history", "design": "d"})",
          R"({"op": "redo", "design": "d"})",
          R"({"op": "call", "command": "PropertiesEnabled", "design": "d"})",
      })),
      Lines({
          R"({"ok":true,})",
          R"({"ok":true,})",
          R"({"ok":true,)" + sheet + "1}}",
          R"({"ok":true,)" + sheet + "1}}",
          R"({"ok":true,)" + sheet + "1}}",
          R"({"ok":true,)" + sheet + "2}}",
          R"({"ok":true,"messages":[],"events":[{"n":1,"name":"TechnologyChanged","arg1":"e","arg2":0}])" + sheet +
              R"(1},"returned":null})",
          R"({"ok":true,)" + sheet + R"(1},"value":{"steps":[],"redo":[],"open":[7357],"changed":false}})",
          R"({"ok":true,"messages":[],"events":[{"n":2,"name":"LayerAdded","arg1":"Glue","arg2":0},)"
          R"({"n":3,"name":"DesignColoursChanged","arg1":0,"arg2":0},)"
          R"({"n":4,"name":"TechnologyChanged","arg1":"d","arg2":0}],"returned":null})",
          R"({"ok":true,})",
          R"({"ok":true,,"value":{"steps":[],"redo":[{"id":7357,"text":"Technology"}],"open":[],"changed":false}})",
          R"({"ok":true,})",
          R"({"ok":true,,"returned":true})",
      }));
}

#ifdef TECHSHEET_CLI
TEST_F(AutomationTest, TheProgramEndsWithTheStatusOfItsResponses) {
  const CString script = Path("script.txt");
  const auto status = [&](const CString& lines, const CString& options) {
    std::ofstream(script) << lines;
    const CString command = CString(TECHSHEET_CLI) + " automate --settings " + Path("settings") + ' ' + options +
                            " > " + Path("out") + " 2> " + Path("errors") + " < " + script;
    return WEXITSTATUS(std::system(command.c_str()));
  };
  const CString write = R"({"op": "setting", "key": "K", "name": "N", "value": 7})";
  EXPECT_EQ(status(write, ""), 0);
  EXPECT_EQ(status(R"({"op": "setting", "key": "K", "name": "N"})", "--edition Tarvik,Corvina --script " + script), 0);
  EXPECT_EQ(FileText(Path("out")), "{\"ok\":true,\"messages\":[],\"events\":[],\"value\":7}\n");
  EXPECT_EQ(status("nonsense\n" + write, ""), 1);
  EXPECT_EQ(status(write, "--edition Nobody"), 2);
  EXPECT_NE(FileText(Path("errors")).find("Pellam"), CString::npos);
  EXPECT_EQ(status(write, "--script " + Path("missing")), 2);
  EXPECT_EQ(status(write, "--unknown"), 2);
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
