#pragma once

// Clean generated programs of the kind the template produces, and the DCLGEN member the
// COBOL one includes; the checker tests plant one fault at a time in them.

namespace quorva::test {

inline constexpr const char* kCobolProgram =
    R"PGM(//PGMORDJ  JOB (ACCT),'ORDERS',CLASS=A,MSGCLASS=X,
//             NOTIFY=&SYSUID
//STEP010  EXEC PGM=IKJEFT01,DYNAMNUM=20
//STEPLIB  DD DSN=USER.LOADLIB,DISP=SHR
//ORDIN    DD DSN=USER.ORDERS.IN,DISP=SHR
//ORDOUT   DD DSN=USER.ORDERS.OUT,DISP=(NEW,CATLG,DELETE),
//            SPACE=(TRK,(10,5),RLSE),DCB=(RECFM=FB,LRECL=80)
//SYSIN    DD *
20261121
/*
//SYSTSIN  DD *
 DSN SYSTEM(DB2P)
 RUN PROGRAM(PGMORD) PLAN(PLANORD) LIB('USER.LOADLIB')
 END
/*
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PGMORD.
      * READS ORDERS AND LOOKS EACH ONE UP IN DB2.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT ORDIN ASSIGN TO ORDIN.
           SELECT ORDOUT ASSIGN TO UT-S-ORDOUT.
       DATA DIVISION.
       FILE SECTION.
       FD  ORDIN RECORDING MODE F.
       01  REC-IN                  PIC X(80).
       FD  ORDOUT RECORDING MODE F.
       01  REC-OUT                 PIC X(80).
       WORKING-STORAGE SECTION.
       01  WS-DATE                 PIC X(8).
       01  WS-NULL-NOTE            PIC S9(4) COMP.
           EXEC SQL INCLUDE SQLCA END-EXEC.
           EXEC SQL INCLUDE ORDERS END-EXEC.
           EXEC SQL DECLARE CUR1 CURSOR FOR
                SELECT ORD_ID FROM PROD.ORDERS
                WHERE CUSTOMER = :DCLORDERS.CUSTOMER
           END-EXEC.
       PROCEDURE DIVISION.
       MAIN-PARA.
           ACCEPT WS-DATE.
           OPEN INPUT ORDIN OUTPUT ORDOUT.
           MOVE 1 TO ORD-ID.
           EXEC SQL
                SELECT CUSTOMER, NOTE
                  INTO :CUSTOMER, :NOTE:WS-NULL-NOTE
                  FROM PROD.ORDERS
                 WHERE ORD_ID = :DCLORDERS.ORD-ID
           END-EXEC.
           IF SQLCODE NOT = 0
              DISPLAY 'SQLCODE ' SQLCODE
           END-IF.
           EXEC SQL OPEN CUR1 END-EXEC.
           EXEC SQL FETCH CUR1 INTO :ORD-ID END-EXEC.
           EXEC SQL CLOSE CUR1 END-EXEC.
           EXEC SQL COMMIT END-EXEC.
           CLOSE ORDIN ORDOUT.
           STOP RUN.
)PGM";

inline constexpr const char* kEasytrieveProgram =
    R"PGM(//EZTORDJ  JOB (ACCT),'EASY',CLASS=A,MSGCLASS=X
//STEP010  EXEC PGM=EZTPA00
//STEPLIB  DD DSN=EZT.LOADLIB,DISP=SHR
//ORDIN    DD DSN=USER.ORDERS.IN,DISP=SHR
//ORDOUT   DD DSN=&&ORDOUT,DISP=(NEW,PASS),UNIT=SYSDA,
//            SPACE=(CYL,(1,1)),RECFM=FB,LRECL=80
//SYSIN    DD *
PARM LINK(EZTORD R)
* ORDERS REPORT
FILE ORDIN
  IN-ID       1  9 N
  IN-NAME    10 30 A
FILE ORDOUT FB(80 800)
  OUT-REC     1 80 A
WS-COUNT     W  5 P 0
JOB INPUT ORDIN NAME ORDJOB
  IF IN-ID > 0
     WS-COUNT = WS-COUNT + 1
     PUT ORDOUT FROM ORDIN
  ELSE
     DISPLAY 'ZERO ID ' +
             IN-NAME
  END-IF
  PRINT ORDREP
REPORT ORDREP LINESIZE 80
  LINE 1 IN-ID IN-NAME
/*
)PGM";

inline constexpr const char* kOrdersMember =
    R"PGM(      * DCLGEN TABLE(PROD.ORDERS)
           EXEC SQL DECLARE PROD.ORDERS TABLE
           ( ORD_ID                         DECIMAL(9, 0) NOT NULL,
             CUSTOMER                       CHAR(30) NOT NULL,
             NOTE                           VARCHAR(40)
           ) END-EXEC.
       01  DCLORDERS.
           10 ORD-ID               PIC S9(9)V USAGE COMP-3.
           10 CUSTOMER             PIC X(30).
           10 NOTE.
              49 NOTE-LEN          PIC S9(4) USAGE COMP.
              49 NOTE-TEXT         PIC X(40).
)PGM";

}  // namespace quorva::test
