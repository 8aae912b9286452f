#include "admin/ppd_attach.h"

#include <gtest/gtest.h>

#include "admin/command_filter.h"

namespace {

constexpr char const* RASTER = "*cupsFilter: \"application/vnd.cups-raster 0 r\"\n";
constexpr char const* RASTER2 = "*cupsFilter2: \"application/vnd.cups-raster a/b 0 r\"\n";
constexpr char const* RIVAL = "*cupsFilter: \"application/vnd.cups-command 0 other\"\n";
constexpr char const* OURS = "*cupsFilter: \"application/vnd.cups-command 0 commandtovelmo\"\n";
constexpr char const* OURS2 =
    "*cupsFilter2: \"application/vnd.cups-command application/octet-stream 0 commandtovelmo\"\n";
constexpr char const* PASS = "*cupsFilter: \"application/vnd.cups-postscript 0 -\"\n";
constexpr char const* LIST = "*cupsCommands: \"ReportLevels ReportStatus\"\n";
constexpr char const* BEGIN = "*% velmoctl begin\n";
constexpr char const* END = "*% velmoctl end\n";

std::string joined(std::initializer_list<std::string_view> parts)
{
  std::string text;
  for (std::string_view const part : parts) text += part;
  return text;
}

AttachWishes replacing() { return {true, {}}; }

AttachWishes texts(std::vector<ReasonText> reasons) { return {false, std::move(reasons)}; }

std::string attached(std::string_view ppd, AttachWishes const& wishes = {})
{
  PpdChange const change = attach(ppd, wishes);
  EXPECT_EQ(change.refusal, "");
  return change.ppd;
}

std::string detached(std::string_view ppd)
{
  PpdChange const change = detach(ppd);
  EXPECT_EQ(change.refusal, "");
  return change.ppd;
}

std::string refusal(std::string_view ppd, AttachWishes const& wishes = {})
{
  PpdChange const change = attach(ppd, wishes);
  EXPECT_EQ(change.ppd, "");
  return change.refusal;
}

}  // namespace

TEST(Attach, OneLineForAFileWithFilterLines)
{
  EXPECT_EQ(attached(RASTER), joined({RASTER, BEGIN, OURS, LIST, END}));
}

TEST(Attach, TheOtherFormForAFileWithCupsFilter2Lines)
{
  EXPECT_EQ(attached(joined({RASTER2, RASTER})),
            joined({RASTER2, RASTER, BEGIN, OURS2, LIST, END}));
}

TEST(Attach, PostScriptIsPassedOnWhereThereIsNoFilterLine)
{
  EXPECT_EQ(attached("*A: 1\n"), joined({"*A: 1\n", BEGIN, PASS, OURS, LIST, END}));
}

TEST(Attach, TheBlockHasTheFilesLineEnds)
{
  for (char const* line_end : {"\r\n", "\r"}) {
    std::string should_be;
    for (char const ch : attached("*A: 1\n"))
      should_be += ch == '\n' ? line_end : std::string(1, ch);
    EXPECT_EQ(attached(std::string("*A: 1") + line_end), should_be);
  }
}

TEST(Attach, WhatIsAsWantedChangesNothing)
{
  std::string const once = attached(RASTER);
  EXPECT_EQ(attached(once), once);
  std::string const by_itself = joined({OURS, LIST});
  EXPECT_EQ(attached(by_itself), by_itself);
  std::string const behind = once + "*A: 1\n";
  EXPECT_EQ(attached(behind), behind);
}

TEST(Attach, ABlockThatIsOutOfForceIsRenewed)
{
  std::string const hidden = attached(RASTER) + RASTER2;
  EXPECT_EQ(attached(hidden), joined({RASTER, RASTER2, BEGIN, OURS2, LIST, END}));
}

TEST(Attach, ARivalIsShownAndRefused)
{
  PpdChange const change = attach(joined({RASTER, RIVAL}), {});
  EXPECT_EQ(change.refusal,
            "the PPD file has lines of its own for this; --replace puts ours in their place");
  EXPECT_EQ(change.rivals,
            std::vector<std::string>{"*cupsFilter: \"application/vnd.cups-command 0 other\""});
}

TEST(Attach, AnotherListOfCommandsIsARival)
{
  for (char const* list :
       {"*cupsCommands: \"Clean\"", "*CUPScommands: none", "*cupsCommands: \"\""})
    EXPECT_EQ(attach(joined({RASTER, list, "\n"}), {}).rivals, std::vector<std::string>{list});
}

TEST(Attach, ARivalIsReplacedWhereItStands)
{
  EXPECT_EQ(attached(joined({RIVAL, RASTER}), replacing()),
            joined({"*% velmoctl replaced ", RIVAL, RASTER, BEGIN, OURS, LIST, END}));
}

TEST(Attach, EveryRivalIsReplaced)
{
  std::string const wildcard = "*cupsFilter: \"application/* 0 any\"\n";
  EXPECT_EQ(attached(joined({RIVAL, wildcard, RIVAL}), replacing()),
            joined({"*% velmoctl replaced ", RIVAL, "*% velmoctl replaced ", wildcard,
                    "*% velmoctl replaced ", RIVAL, BEGIN, OURS, LIST, END}));
}

TEST(Attach, RivalsOfEveryKindAreReplacedInAnyOrder)
{
  std::string const text = "*cupsIPPReason com.velmo-error0001/Theirs: \"\"\n";
  std::string const list = "*cupsCommands: \"Clean\"\n";
  std::string const mark = "*% velmoctl replaced ";
  AttachWishes wishes = texts({{"com.velmo-error0001", "Ours"}});
  wishes.replace = true;
  EXPECT_EQ(attached(joined({list, text, RIVAL, RASTER}), wishes),
            joined({mark, list, mark, text, mark, RIVAL, RASTER, BEGIN, OURS, LIST,
                    "*cupsIPPReason com.velmo-error0001/Ours: \"\"\n", END}));
}

TEST(Attach, ARivalThatDoesNotWinIsLeftAlone)
{
  std::string const dear = "*cupsFilter: \"application/vnd.cups-command 9 dear\"\n";
  EXPECT_EQ(attached(dear), joined({dear, BEGIN, OURS, LIST, END}));
  EXPECT_EQ(attached(joined({RASTER2, RIVAL})), joined({RASTER2, RIVAL, BEGIN, OURS2, LIST, END}));
}

TEST(Attach, AReplacedLineOfTheOtherFormKeepsTheForm)
{
  std::string const rival2 = "*cupsFilter2: \"application/vnd.cups-command a/b 0 other\"\n";
  EXPECT_EQ(attached(joined({rival2, RASTER}), replacing()),
            joined({"*% velmoctl replaced ", rival2, RASTER, BEGIN, OURS2, LIST, END}));
}

TEST(Attach, ABlockMadeWithReplaceIsRenewedWithoutSayingItAgain)
{
  std::string const once = attached(joined({RIVAL, RASTER}), replacing());
  std::string const hidden = once + RASTER2;
  EXPECT_EQ(refusal(once + "*cupsFilter: \"application/vnd.cups-command 0 new\"\n",
                    texts({{"com.velmo-error0001", "T"}}))
                .substr(0, 30),
            "the PPD file has lines of its ");
  EXPECT_EQ(attached(hidden), joined({RIVAL, RASTER, RASTER2, BEGIN, OURS2, LIST, END}));
  EXPECT_EQ(attached(once, texts({{"com.velmo-error0001", "T"}})),
            joined({"*% velmoctl replaced ", RIVAL, RASTER, BEGIN, OURS, LIST,
                    "*cupsIPPReason com.velmo-error0001/T: \"\"\n", END}));
}

TEST(Attach, ALongRivalReplacedEarlierIsReplacedAgain)
{
  std::string const list = "*cupsCommands: \"a\nb\nc\"\n";
  std::string const once = attached(joined({list, RASTER}), replacing());
  AttachWishes wishes = texts({{"com.velmo-error0001", "T"}});
  std::string const renewed = attached(once, wishes);
  wishes.replace = true;
  EXPECT_EQ(renewed, attached(joined({list, RASTER}), wishes));
}

TEST(Attach, TextsAreWrittenInTheFilesEncoding)
{
  EXPECT_EQ(attached(RASTER, texts({{"com.velmo-error0001", "Tür"}})),
            joined({RASTER, BEGIN, OURS, LIST, "*cupsIPPReason com.velmo-error0001/T\xfcr: \"\"\n",
                    END}));
  EXPECT_EQ(refusal(RASTER, texts({{"com.velmo-error0001", "→"}})),
            "the text for com.velmo-error0001 holds a character that the encoding of the PPD file "
            "does not have");
}

TEST(Attach, TextsStayUnlessNewOnesAreGivenOrNone)
{
  std::string const first = attached(RASTER, texts({{"com.velmo-error0001", "A"}}));
  EXPECT_EQ(attached(first), first);
  EXPECT_EQ(attached(first + RASTER2),
            joined({RASTER, RASTER2, BEGIN, OURS2, LIST,
                    "*cupsIPPReason com.velmo-error0001/A: \"\"\n", END}));
  EXPECT_EQ(attached(first, texts({{"com.velmo-error0002", "B"}})),
            attached(RASTER, texts({{"com.velmo-error0002", "B"}})));
  EXPECT_EQ(attached(first, texts({})), attached(RASTER));
}

TEST(Attach, TheSameTextsOnceMoreLeaveABlockThatHoldsAsItIs)
{
  AttachWishes const wishes = texts({{"com.velmo-error0001", "A"}});
  std::string const noted = joined({RASTER, BEGIN, OURS, LIST, "*% a note\n",
                                    "*cupsIPPReason com.velmo-error0001/A: \"\"\n", END});
  EXPECT_EQ(attached(noted, wishes), noted);
}

TEST(Attach, TheSameTextsOnceMoreRenewABlockThatIsOutOfForce)
{
  AttachWishes const wishes = texts({{"com.velmo-error0001", "A"}});
  EXPECT_EQ(attached(attached(RASTER, wishes) + RASTER2, wishes),
            joined({RASTER, RASTER2, BEGIN, OURS2, LIST,
                    "*cupsIPPReason com.velmo-error0001/A: \"\"\n", END}));
}

TEST(Attach, TextsThatSomebodyWorkedOnAreWrittenAnew)
{
  EXPECT_EQ(
      attached(joined({RASTER, BEGIN, "*cupsIPPReason com.velmo-error0001/T : \"a\nb\"\n", END})),
      joined({RASTER, BEGIN, OURS, LIST, "*cupsIPPReason com.velmo-error0001/T : \"\"\n", END}));
}

TEST(Attach, AVendorsTextIsARivalOfANewOne)
{
  std::string const vendors = "*cupsIPPReason com.velmo-error0001/Theirs: \"\"\n";
  std::string const file = joined({vendors, RASTER});
  AttachWishes wishes = texts({{"com.velmo-error0001", "Ours"}});
  EXPECT_EQ(attach(file, wishes).rivals,
            std::vector<std::string>{vendors.substr(0, vendors.size() - 1)});
  wishes.replace = true;
  EXPECT_EQ(attached(file, wishes).substr(0, 40), "*% velmoctl replaced *cupsIPPReason com.");
  EXPECT_EQ(attached(file, texts({{"com.velmo-error0002", "Ours"}})).substr(0, 30),
            vendors.substr(0, 30));
}

TEST(Attach, ATextWithoutAKeywordIsNoRival)
{
  EXPECT_EQ(attached(joined({"*cupsIPPReason: \"\"\n", RASTER})),
            joined({"*cupsIPPReason: \"\"\n", RASTER, BEGIN, OURS, LIST, END}));
}

TEST(Attach, AFileThatWouldSwallowTheBlockIsRefused)
{
  EXPECT_EQ(refusal("*A: 1\n*B: \"2\n"),
            "line 2 of the PPD file opens a quote that is never closed; close it first");
  EXPECT_EQ(refusal("*A: 1\n*%APLWORKSET START\n"),
            "the scheduler reads nothing behind line 2 of the PPD file; take out what begins there "
            "first");
  EXPECT_EQ(refusal(BEGIN),
            "the PPD file is damaged: line 1: a block of velmoctl begins that has "
            "no end; mend it by hand and give it back");
}

TEST(Attach, AQuoteOpenedBehindABlockThatHoldsIsRefusedToo)
{
  EXPECT_EQ(refusal(attached(RASTER) + "*A: \"1\n"),
            "line 6 of the PPD file opens a quote that is never closed; close it first");
}

TEST(Attach, ReplacedLinesThatAreNoLinesWithoutTheirMarkAreRefused)
{
  std::string const fence = joined({BEGIN, END, RASTER});
  EXPECT_EQ(refusal("*% velmoctl replaced *A: \"1\n" + fence),
            "line 1 of the PPD file opens a quote that is never closed; close it first");
  EXPECT_EQ(refusal("*% velmoctl replaced *% velmoctl begin\n*% velmoctl replaced *% velmoctl "
                    "end\n"
                    + fence),
            "the PPD file has a second block behind its replaced lines");
}

TEST(Detach, ABlockThatAQuoteHidesIsRefusedAndBroken)
{
  std::string const hidden = "*A: \"1\n" + joined({BEGIN, END});
  std::string const why =
      "line 1 of the PPD file opens a quote that is never closed; close it first";
  EXPECT_EQ(detach(hidden).refusal, why);
  EXPECT_TRUE(read_attachment(hidden).is_attached);
  EXPECT_EQ(read_attachment(hidden).problem, why);
  EXPECT_FALSE(read_attachment("*A: \"1\n").is_attached);
  EXPECT_EQ(detach("*A: \"1\n").refusal, "");
}

TEST(Detach, AnEndThatAQuoteHidesIsRefusedWithoutItsBegin)
{
  EXPECT_EQ(detach(joined({"*A: \"1\n", END})).refusal,
            "line 1 of the PPD file opens a quote that is never closed; close it first");
}

TEST(Detach, ABlockInAValueBehindAnEarlyEndIsRefusedAndBroken)
{
  std::string const hidden = joined({"*%APLWORKSET START\n*A: \"1\n", BEGIN, END, "\"\n"});
  std::string const why =
      "the scheduler reads nothing behind line 1 of the PPD file; take out what begins there first";
  EXPECT_EQ(detach(hidden).refusal, why);
  EXPECT_EQ(read_attachment(hidden).problem, why);
}

TEST(Detach, GivesBackTheFileByteForByte)
{
  for (std::string const& file :
       {std::string(), std::string("*A: 1"), std::string("*A: 1\n"), std::string("*A: 1\r\n*B: 2"),
        std::string("*A: 1\r*B: 2\r"), std::string("*A: 1\n*B: 2\r\n*C: 3\r"),
        std::string("*A: \xfc\n"), std::string("*% a: \" quote\n"), std::string("*A: 1\r\n\x1a"),
        joined({RIVAL, "*cupsCommands: \"a\r\nb\"\r\n", RASTER}),
        std::string(RIVAL).substr(0, 45) + "x\""}) {
    std::string const changed = attached(file, replacing());
    EXPECT_NE(changed, file);
    EXPECT_FALSE(attachment_problem(read_ppd_records(changed).records)) << changed;
    EXPECT_EQ(detached(changed), file);
  }
}

TEST(Detach, LinesBehindTheBlockStay)
{
  EXPECT_EQ(detached(attached("*A: 1") + "*B: 2\n"), "*A: 1\n*B: 2\n");
}

TEST(Detach, WhatIsNotAttachedChangesNothing)
{
  EXPECT_EQ(detached(joined({OURS, LIST})), joined({OURS, LIST}));
}

TEST(Detach, ADamagedFenceIsRefused)
{
  EXPECT_EQ(detach(END).refusal,
            "the PPD file is damaged: line 1: a block of velmoctl ends that "
            "has no begin; mend it by hand and give it back");
}

TEST(ReadAttachment, ToldByTheFileAlone)
{
  EXPECT_FALSE(read_attachment(RASTER).is_attached);
  EXPECT_FALSE(read_attachment(RIVAL).is_attached);
  EXPECT_TRUE(read_attachment(attached(RASTER)).is_attached);
  EXPECT_EQ(read_attachment(attached(RASTER)).problem, "");
  for (auto const& [ppd, problem] :
       {std::pair{attached(RASTER) + RASTER2, "no filter takes command jobs"},
        {std::string(OURS), "no line lists the commands"},
        {std::string(OURS2), "no line lists the commands"},
        {joined({RASTER2, OURS}), "no filter takes command jobs"},
        {std::string(BEGIN), "line 1: a block of velmoctl begins that has no end"}}) {
    EXPECT_TRUE(read_attachment(ppd).is_attached) << ppd;
    EXPECT_EQ(read_attachment(ppd).problem, problem) << ppd;
  }
  EXPECT_FALSE(
      read_attachment("*A: \"application/vnd.cups-command 0 commandtovelmo\"\n").is_attached);
}
